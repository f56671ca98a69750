#include "LvProgressBar.h"

#include <unistd.h>

namespace
{

constexpr int barWidth = 40;
constexpr int percentOfAll = 100;

} // namespace

LvProgressBar::LvProgressBar(std::FILE* stream, int stepCount, bool enabled)
    : myStream(stream)
    , myStepCount(stepCount)
    , myIsEnabled(enabled && stepCount > 1 && isatty(fileno(stream)) == 1)
{
}

LvProgressBar::~LvProgressBar()
{
    clear();
}

void LvProgressBar::advance()
{
    ++myDone;
    const int percent = static_cast<int>(qint64(percentOfAll) * myDone / myStepCount);
    if (!myIsEnabled || percent == myShownPercent) {
        return;
    }
    myShownPercent = percent;
    std::fprintf(myStream, "\r%s", qUtf8Printable(line(myDone, myStepCount)));
    std::fflush(myStream);
}

void LvProgressBar::clear()
{
    if (myIsEnabled && myShownPercent >= 0) {
        std::fputs("\r\033[K", myStream);
        std::fflush(myStream);
        myShownPercent = -1;
    }
}

QString LvProgressBar::line(int done, int stepCount)
{
    const int percent = static_cast<int>(qint64(percentOfAll) * done / stepCount);
    const int filled = static_cast<int>(qint64(barWidth) * done / stepCount);
    return QStringLiteral("[%1%2] %3 % (%4)")
        .arg(QString(filled, QLatin1Char('#')), QString(barWidth - filled, QLatin1Char(' ')),
             QStringLiteral("%1").arg(percent, 3),
             tr("%1 von %2").arg(QString::number(done), QString::number(stepCount)));
}
