#include "LvGeoArcEdit.h"

#include "LvGeoArc.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QSpinBox>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int largestDegrees = 360;
constexpr int largestMinutes = 59;
constexpr double largestSeconds = 59.999;
constexpr int secondDecimals = 3;
constexpr double minutesPerDegree = 60.0;
constexpr double secondsPerDegree = 3600.0;

constexpr int positiveIndex = 0;
constexpr int negativeIndex = 1;

} // namespace

LvGeoArcEdit::LvGeoArcEdit(QWidget* parent, bool latitude)
    : QWidget(parent)
    , myDegrees(new QSpinBox(this))
    , myMinutes(new QSpinBox(this))
    , mySeconds(new QDoubleSpinBox(this))
    , myHemisphere(new QComboBox(this))
    , myIsLatitude(latitude)
{
    myDegrees->setRange(-largestDegrees, largestDegrees);
    myDegrees->setSuffix(QStringLiteral("°"));
    myDegrees->setMinimumWidth(60);
    myDegrees->setWrapping(true);

    myMinutes->setRange(0, largestMinutes);
    myMinutes->setSingleStep(10);
    myMinutes->setSuffix(QStringLiteral("'"));
    myMinutes->setMinimumWidth(50);
    myMinutes->setWrapping(true);

    mySeconds->setDecimals(secondDecimals);
    mySeconds->setRange(0.0, largestSeconds);
    mySeconds->setSingleStep(10.0);
    mySeconds->setSuffix(QStringLiteral("\""));
    mySeconds->setMinimumWidth(80);
    mySeconds->setWrapping(true);

    myHemisphere->addItem(QString(), 1);
    myHemisphere->addItem(QString(), -1);
    translateTexts();

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(5);
    layout->addWidget(myHemisphere);
    layout->addWidget(myDegrees);
    layout->addWidget(myMinutes);
    layout->addWidget(mySeconds);
    // The keyboard goes the way the eye goes.
    setTabOrder(myHemisphere, myDegrees);
    setTabOrder(myDegrees, myMinutes);
    setTabOrder(myMinutes, mySeconds);
    setFocusProxy(myHemisphere);
}

LvGeoArcEdit::~LvGeoArcEdit() = default;

void LvGeoArcEdit::setGeoArc(const LvGeoArc& arc)
{
    const int degree = std::clamp(arc.degree(), -largestDegrees, largestDegrees);
    myDegrees->setValue(std::abs(degree));
    myMinutes->setValue(std::abs(arc.minute()));
    mySeconds->setValue(std::fmin(std::abs(arc.secondF()), largestSeconds)); // fmin also stops not-a-number
    myHemisphere->setCurrentIndex(degree < 0 ? negativeIndex : positiveIndex);
}

LvGeoArc LvGeoArcEdit::geoArc() const
{
    const double sign = myHemisphere->currentIndex() == negativeIndex ? -1.0 : 1.0;
    return {sign * mySeconds->value() / secondsPerDegree + (myMinutes->value() * sign) / minutesPerDegree
            + myDegrees->value() * sign};
}

void LvGeoArcEdit::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        translateTexts();
    }
    QWidget::changeEvent(event);
}

void LvGeoArcEdit::translateTexts()
{
    if (myIsLatitude) {
        myHemisphere->setItemText(positiveIndex, tr("Nord", "COMBOBOX  Coordinate/Nautical bearing"));
        myHemisphere->setItemText(negativeIndex, tr("Süd", "COMBOBOX  Coordinate/Nautical bearing"));
        setAccessibleName(tr("Geografische Breite"));
        myHemisphere->setAccessibleName(tr("Breite: Himmelsrichtung"));
        myDegrees->setAccessibleName(tr("Breite: Grad"));
        myMinutes->setAccessibleName(tr("Breite: Minuten"));
        mySeconds->setAccessibleName(tr("Breite: Sekunden"));
    } else {
        myHemisphere->setItemText(positiveIndex, tr("Ost", "COMBOBOX  Coordinate/Nautical bearing"));
        myHemisphere->setItemText(negativeIndex, tr("West", "COMBOBOX  Coordinate/Nautical bearing"));
        setAccessibleName(tr("Geografische Länge"));
        myHemisphere->setAccessibleName(tr("Länge: Himmelsrichtung"));
        myDegrees->setAccessibleName(tr("Länge: Grad"));
        myMinutes->setAccessibleName(tr("Länge: Minuten"));
        mySeconds->setAccessibleName(tr("Länge: Sekunden"));
    }
}
