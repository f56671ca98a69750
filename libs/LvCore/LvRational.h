#pragma once

#include "lvcore_export.h"

#include <QMetaType>
#include <QString>

/// A fraction as it was given, never reduced: picture metadata keep the precision in the denominator.
class LVCORE_EXPORT LvRational
{
public:
    LvRational(qint64 numerator, qint64 denominator);

    [[nodiscard]] qint64 numerator() const { return myNumerator; }

    [[nodiscard]] qint64 denominator() const { return myDenominator; }

    /// Numerator, slash, denominator: "2400000/100000".
    [[nodiscard]] QString toString() const;

    /// Whether numerators and denominators are equal; 1/2 differs from 2/4.
    friend bool operator==(const LvRational& left, const LvRational& right) = default;

private:
    qint64 myNumerator;
    qint64 myDenominator;
};

Q_DECLARE_TYPEINFO(LvRational, Q_RELOCATABLE_TYPE);
