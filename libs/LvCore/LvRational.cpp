#include "LvRational.h"

LvRational::LvRational(qint64 numerator, qint64 denominator)
    : myNumerator(numerator)
    , myDenominator(denominator)
{
}

QString LvRational::toString() const
{
    return QStringLiteral("%1/%2").arg(QString::number(myNumerator), QString::number(myDenominator));
}
