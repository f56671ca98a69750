#pragma once

#include <QCoreApplication>
#include <QString>

#include <cstdio>

/**
 * A progress bar of one line on a terminal.
 *
 * Writes to the stream only when it is a terminal and there is more than one step, and at most once per
 * percent.
 */
class LvProgressBar
{
    Q_DECLARE_TR_FUNCTIONS(LvProgressBar)

public:
    LvProgressBar(std::FILE* stream, int stepCount, bool enabled);
    ~LvProgressBar();
    Q_DISABLE_COPY_MOVE(LvProgressBar)

    /// One step more is done.
    void advance();

    /// Removes the bar, so that a message can be written in its place; the next step draws it again.
    void clear();

    /// The bar for so many steps of all, "[#####     ]  50 % (1 von 2)".
    static QString line(int done, int stepCount);

private:
    std::FILE* myStream;
    int myStepCount;
    int myDone = 0;
    int myShownPercent = -1;
    bool myIsEnabled;
};
