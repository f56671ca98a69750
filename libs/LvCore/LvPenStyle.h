#pragma once

#include "lvcore_export.h"

#include <QMetaType>

class QDomElement;
class QPen;

/**
 * The dash pattern of a line, by the values of Qt::PenStyle: 0 draws nothing, 1 is solid, 2 to 5 are the
 * patterns of dashes and dots. Everything else becomes solid (a custom pattern has no form in a file).
 */
class LVCORE_EXPORT LvPenStyle
{
public:
    /// A solid line.
    LvPenStyle() = default;

    // NOLINTNEXTLINE(google-explicit-constructor) styles are written as their number or as a Qt::PenStyle
    LvPenStyle(int value);

    /// Reads the child "penStyle". A missing or unknown one gives a solid line.
    static LvPenStyle fromXml(const QDomElement& parent);

    /// The value of Qt::PenStyle, 0 to 5.
    [[nodiscard]] int value() const { return myValue; }

    /// Gives the pen this style; colour, width, cap and join stay.
    void modifyPen(QPen& pen) const;

    /// Appends the child "penStyle" with the value as a decimal number.
    void toXml(QDomElement& parent) const;

    friend bool operator==(const LvPenStyle& left, const LvPenStyle& right) = default;

private:
    int myValue = 1;
};

Q_DECLARE_TYPEINFO(LvPenStyle, Q_RELOCATABLE_TYPE);
