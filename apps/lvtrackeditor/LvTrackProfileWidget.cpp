#include "LvTrackProfileWidget.h"

#include "LvElidedLabel.h"
#include "LvGPXTrack.h"
#include "LvMeasureText.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

namespace
{

constexpr int distanceRow = 0;
constexpr int timeRow = 1;

} // namespace

LvTrackProfileWidget::LvTrackProfileWidget(QWidget* parent)
    : QWidget(parent)
    , myAxis(new QComboBox(this))
    , myReadout(new LvElidedLabel(this))
    , myPlot(new LvTrackProfilePlot(this))
{
    auto* caption = new QLabel(tr("Über:"), this);
    caption->setBuddy(myAxis);
    myAxis->setObjectName(QStringLiteral("axis"));
    myAxis->setAccessibleName(tr("Waagerechte Achse des Profils"));
    myAxis->addItem(tr("Entfernung"));
    myAxis->addItem(tr("Zeit"));
    myReadout->setObjectName(QStringLiteral("readout"));
    myPlot->setObjectName(QStringLiteral("plot"));

    auto* head = new QHBoxLayout;
    head->addWidget(caption);
    head->addWidget(myAxis);
    head->addWidget(myReadout, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addWidget(myPlot, 1);

    connect(myAxis, &QComboBox::activated, this, &LvTrackProfileWidget::onAxisChosen);
    connect(myPlot, &LvTrackProfilePlot::cursorMoved, this, &LvTrackProfileWidget::onCursorMoved);
    clear();
}

LvTrackProfileWidget::~LvTrackProfileWidget() = default;

void LvTrackProfileWidget::setTrack(const LvGPXTrack& track)
{
    setStatistics(LvTrackStatistics(track));
}

void LvTrackProfileWidget::setStatistics(const LvTrackStatistics& statistics)
{
    const bool hasCursor = myPlot->cursorIndex() >= 0;
    myPlot->setStatistics(statistics);
    auto* model = qobject_cast<QStandardItemModel*>(myAxis->model());
    model->item(timeRow)->setEnabled(statistics.hasTimes());
    myAxis->setCurrentIndex(myPrefersTime && statistics.hasTimes() ? timeRow : distanceRow);
    setEnabled(!statistics.points().isEmpty());
    updateReadout();
    if (hasCursor) {
        Q_EMIT positionHovered({}); // what was marked belongs to another track
    }
}

void LvTrackProfileWidget::clear()
{
    setStatistics({});
}

void LvTrackProfileWidget::setMarkedPosition(const LvGeoPosition& position)
{
    myPlot->setCursorIndex(position.isValid() ? nearestIndex(position) : -1);
    updateReadout();
}

void LvTrackProfileWidget::onAxisChosen(int row)
{
    myPrefersTime = row == timeRow;
    myPlot->setAxis(myPrefersTime ? LvTrackProfilePlot::Axis::Time : LvTrackProfilePlot::Axis::Distance);
}

void LvTrackProfileWidget::onCursorMoved(qsizetype index)
{
    updateReadout();
    Q_EMIT positionHovered(index < 0 ? LvGeoPosition() : myPlot->statistics().points().at(index).position);
}

void LvTrackProfileWidget::updateReadout()
{
    QStringList texts;
    if (myPlot->cursorIndex() >= 0) {
        const LvTrackProfilePoint& point = myPlot->statistics().points().at(myPlot->cursorIndex());
        texts.append(LvMeasureText::distance(point.distanceKm));
        if (!std::isnan(point.elapsedSeconds)) {
            texts.append(LvMeasureText::duration(point.elapsedSeconds));
        }
        if (!std::isnan(point.elevationMetres)) {
            texts.append(LvMeasureText::metres(point.elevationMetres));
        }
        if (!std::isnan(point.speedKmh)) {
            texts.append(LvMeasureText::speed(point.speedKmh));
        }
    }
    const QString text = texts.join(QStringLiteral(" · "));
    myReadout->setFullText(text);
    myPlot->setAccessibleDescription(text);
}

qsizetype LvTrackProfileWidget::nearestIndex(const LvGeoPosition& position) const
{
    // On a plane around the position: only the order of the distances counts, and this runs on every movement
    // of the mouse.
    const QList<LvTrackProfilePoint>& points = myPlot->statistics().points();
    const double latitude = position.latitude().decimalDegrees();
    const double longitude = position.longitude().decimalDegrees();
    const double shrink = std::cos(position.latitude().radians());
    qsizetype nearest = -1;
    double nearestSquare = std::numeric_limits<double>::infinity();
    for (qsizetype i = 0; i < points.size(); ++i) {
        const LvGeoPosition& candidate = points.at(i).position;
        const double north = candidate.latitude().decimalDegrees() - latitude;
        const double east =
            std::remainder(candidate.longitude().decimalDegrees() - longitude, 360.0) * shrink;
        const double square = north * north + east * east;
        if (square < nearestSquare) {
            nearestSquare = square;
            nearest = i;
        }
    }
    return nearest;
}
