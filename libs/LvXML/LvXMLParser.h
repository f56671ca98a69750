#pragma once

#include "lvxml_export.h"

#include <QColor>
#include <QDateTime>
#include <QDomElement>
#include <QString>

/**
 * Typed reading of the attributes and child texts of an XML element.
 *
 * Reading never fails: what is missing is the given default, and what is there but unreadable is the value
 * that the function names. Element and attribute names are compared exactly, prefix included; of several
 * children with one name the first counts. Only static functions without state: callable from every thread,
 * as long as no other thread works on the same document.
 */
class LVXML_EXPORT LvXMLParser
{
public:
    LvXMLParser() = delete;

    /// The attribute as a number in the C locale; 0.0 when it is there but no number.
    [[nodiscard]] static double doubleAttribute(const QDomElement& element, const QString& name,
                                                double defaultValue = 0.0);

    /// The attribute as a decimal integer; the default also when it is there but no 32-bit integer ("12.5").
    [[nodiscard]] static int intAttribute(const QDomElement& element, const QString& name,
                                          int defaultValue = 0);

    /// The attribute as it stands, untrimmed.
    [[nodiscard]] static QString stringAttribute(const QDomElement& element, const QString& name,
                                                 const QString& defaultValue = {});

    /// The attribute as a truth value: "true" or "1", "false" or "0", whatever the case and outer white
    /// space; the default for every other text.
    [[nodiscard]] static bool boolAttribute(const QDomElement& element, const QString& name,
                                            bool defaultValue = false);

    /// The text below the child element, untrimmed; empty when the child is there without text.
    [[nodiscard]] static QString text(const QDomElement& element, const QString& child,
                                      const QString& defaultValue = {});

    /// The child's text as a number in the C locale; 0.0 when the child is there but its text is no number.
    [[nodiscard]] static double doubleText(const QDomElement& element, const QString& child,
                                           double defaultValue = 0.0);

    /// The child's text as a decimal integer; 0 when the child is there but its text is no 32-bit integer.
    [[nodiscard]] static int intText(const QDomElement& element, const QString& child, int defaultValue = 0);

    /// The child's text as a truth value, read like boolAttribute().
    [[nodiscard]] static bool boolText(const QDomElement& element, const QString& child,
                                       bool defaultValue = false);

    /// The child's text, without outer white space, as a date-time of the given format; an invalid date-time
    /// when the child is there but its text is none.
    [[nodiscard]] static QDateTime dateTimeText(const QDomElement& element, const QString& child,
                                                Qt::DateFormat format = Qt::ISODate,
                                                const QDateTime& defaultValue = {});

    /// A colour from "#" and exactly six (red, green, blue; opaque) or eight (alpha, red, green, blue)
    /// hexadecimal digits of either case. Every other text, colour names and outer blanks included, is
    /// QColor(0, 0, 0, 0): a missing colour is fully transparent.
    [[nodiscard]] static QColor readColor(const QString& text);
};
