#pragma once

#include <QList>
#include <QString>

/**
 * The values at which the axis of a plot has its marks: round numbers at equal steps. A plain value.
 *
 * Steps of numbers are 1, 2 or 5 times a power of ten. Steps of times are those that clocks have.
 */
class LvAxisTicks
{
public:
    /// No marks.
    LvAxisTicks() = default;

    /// Round numbers from lowest to highest, both included, about mostTicks at most. None when the range is
    /// empty or not finite, or without room for two marks.
    static LvAxisTicks numbers(double lowest, double highest, int mostTicks);

    /// Round numbers that enclose the range: the first one is not above lowest, the last one not below
    /// highest.
    static LvAxisTicks enclosing(double lowest, double highest, int mostTicks);

    /// Round times of a range in seconds.
    static LvAxisTicks seconds(double lowest, double highest, int mostTicks);

    [[nodiscard]] const QList<double>& values() const { return myValues; }

    /// The distance between two marks; 0 without marks.
    [[nodiscard]] double step() const { return myStep; }

    /// The text of a mark: a number in the default locale with just the decimals that the step needs, or a
    /// time as "h:mm", with steps below a minute as "h:mm:ss".
    [[nodiscard]] QString label(double value) const;

private:
    void fill(double first, double highest);

    QList<double> myValues;
    double myStep = 0.0;
    bool myIsTime = false;
};
