#pragma once

#include "lvcore_export.h"

#include <QRegularExpression>

/**
 * A regular expression, compiled when it is made so that a static one costs nothing later.
 *
 * Using it changes nothing in it: several threads may share one.
 */
class LVCORE_EXPORT LvRegularExpression
{
public:
    explicit LvRegularExpression(const QString& pattern);

    /// Whether the pattern is a regular expression. An invalid one matches nothing.
    [[nodiscard]] bool isValid() const { return myExpression.isValid(); }

    [[nodiscard]] QString pattern() const { return myExpression.pattern(); }

    /// Removes every match from the text.
    void removeFrom(QString& text) const;

private:
    QRegularExpression myExpression;
};
