#include "LvRegularExpression.h"

LvRegularExpression::LvRegularExpression(const QString& pattern)
    : myExpression(pattern)
{
    myExpression.optimize();
}

void LvRegularExpression::removeFrom(QString& text) const
{
    if (myExpression.isValid()) {
        text.remove(myExpression);
    }
}
