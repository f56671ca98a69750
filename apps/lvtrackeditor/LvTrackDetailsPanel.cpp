#include "LvTrackDetailsPanel.h"

#include "LvGPXConfiguredTrack.h"
#include "LvMeasureText.h"
#include "LvTrackStatistics.h"

#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QScrollBar>

LvTrackDetailsPanel::LvTrackDetailsPanel(QWidget* parent)
    : QScrollArea(parent)
{
    auto* content = new QWidget(this);
    auto* layout = new QFormLayout(content);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);

    myName = new QLineEdit(content);
    myName->setObjectName(QStringLiteral("name"));
    myName->setAccessibleName(tr("Name der Spur"));
    myName->setPlaceholderText(tr("ohne Namen"));
    myName->installEventFilter(this);
    layout->addRow(tr("Name:"), myName);
    myDescription = addRow(layout, tr("Beschreibung:"), QStringLiteral("description"));
    myShape = addRow(layout, tr("Form:"), QStringLiteral("shape"));
    myPoints = addRow(layout, tr("Punkte:"), QStringLiteral("points"));
    myLength = addRow(layout, tr("Länge:"), QStringLiteral("length"));
    myStart = addRow(layout, tr("Beginn:"), QStringLiteral("start"));
    myEnd = addRow(layout, tr("Ende:"), QStringLiteral("end"));
    myDuration = addRow(layout, tr("Dauer:"), QStringLiteral("duration"));
    myMovingTime = addRow(layout, tr("In Bewegung:"), QStringLiteral("movingTime"));
    myMeanSpeed = addRow(layout, tr("Im Durchschnitt:"), QStringLiteral("meanSpeed"));
    myMovingSpeed = addRow(layout, tr("Ohne Pausen:"), QStringLiteral("movingSpeed"));
    myHighestSpeed = addRow(layout, tr("Höchstens:"), QStringLiteral("highestSpeed"));
    myAscent = addRow(layout, tr("Anstieg:"), QStringLiteral("ascent"));
    myDescent = addRow(layout, tr("Abstieg:"), QStringLiteral("descent"));
    myElevations = addRow(layout, tr("Höhe:"), QStringLiteral("elevations"));
    mySouthWest = addRow(layout, tr("Südwestecke:"), QStringLiteral("southWest"));
    myNorthEast = addRow(layout, tr("Nordostecke:"), QStringLiteral("northEast"));

    const QString noise = tr("Auf und Ab von weniger als %1 Metern zählt nicht: So viel schwanken Messungen.")
                              .arg(QLocale().toString(LvTrackStatistics::noiseMetres, 'f', 0));
    myAscent->setToolTip(noise);
    myDescent->setToolTip(noise);
    myMovingTime->setToolTip(tr("Die Zeit, in der man schneller als %1 km/h war.")
                                 .arg(QLocale().toString(LvTrackStatistics::restKmh, 'f', 0)));
    myHighestSpeed->setToolTip(
        tr("Gemittelt über jeweils %1 Sekunden.")
            .arg(QLocale().toString(2.0 * LvTrackStatistics::speedWindowSeconds, 'f', 0)));

    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Einzelheiten der Spur"));
    connect(myName, &QLineEdit::editingFinished, this, &LvTrackDetailsPanel::onNameFinished);
    clear();
}

LvTrackDetailsPanel::~LvTrackDetailsPanel()
{
    // A line edit that loses the focus while it is destroyed has finished, too.
    myName->disconnect(this);
}

void LvTrackDetailsPanel::setTrack(const LvGPXConfiguredTrack& track)
{
    setTrack(track, LvTrackStatistics(track.track()));
}

void LvTrackDetailsPanel::setTrack(const LvGPXConfiguredTrack& track, const LvTrackStatistics& statistics)
{
    // An equal name leaves the line edit alone: somebody may be typing in it.
    if (myShownName != track.name() || !widget()->isEnabled()) {
        myShownName = track.name();
        myName->setText(myShownName);
        myName->setCursorPosition(0);
    }
    const auto orMissing = [](const QString& text) {
        return text.isEmpty() ? LvMeasureText::missing() : text;
    };
    myDescription->setText(orMissing(track.description()));
    myShape->setText(orMissing(track.effectiveShape().humanReadable(track.configuration().markerShape())));
    const auto segments = static_cast<int>(track.track().segments().size());
    const QString points = QLocale().toString(track.track().countPoints());
    myPoints->setText(segments > 1 ? tr("%1 in %n Abschnitten", nullptr, segments).arg(points) : points);
    myLength->setText(LvMeasureText::distance(statistics.lengthKm()));
    myStart->setText(LvMeasureText::dateTime(statistics.startTime()));
    myEnd->setText(LvMeasureText::dateTime(statistics.endTime()));
    myDuration->setText(LvMeasureText::duration(statistics.durationSeconds()));
    myMovingTime->setText(LvMeasureText::duration(statistics.movingSeconds()));
    myMeanSpeed->setText(LvMeasureText::speed(statistics.meanSpeedKmh()));
    myMovingSpeed->setText(LvMeasureText::speed(statistics.movingSpeedKmh()));
    myHighestSpeed->setText(LvMeasureText::speed(statistics.highestSpeedKmh()));
    myAscent->setText(LvMeasureText::metres(statistics.ascentMetres()));
    myDescent->setText(LvMeasureText::metres(statistics.descentMetres()));
    myElevations->setText(statistics.hasElevations()
                              ? tr("%1 bis %2")
                                    .arg(LvMeasureText::metres(statistics.lowestMetres()),
                                         LvMeasureText::metres(statistics.highestMetres()))
                              : LvMeasureText::missing());
    const LvGeoPositionRect box = statistics.boundingBox();
    mySouthWest->setText(LvMeasureText::position({box.south(), box.west()}));
    myNorthEast->setText(LvMeasureText::position({box.north(), box.east()}));
    widget()->setEnabled(true);
}

void LvTrackDetailsPanel::clear()
{
    myShownName.clear();
    myName->clear();
    const QList<QLabel*> values = widget()->findChildren<QLabel*>(QRegularExpression(QStringLiteral(".+")));
    for (QLabel* value : values) {
        value->setText(LvMeasureText::missing());
    }
    widget()->setEnabled(false);
}

void LvTrackDetailsPanel::editName()
{
    ensureWidgetVisible(myName);
    myName->setFocus(Qt::ShortcutFocusReason);
    myName->selectAll();
}

QSize LvTrackDetailsPanel::sizeHint() const
{
    // All of the content where there is room for it; the area itself would ask for a fixed number of lines.
    return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 2 * frameWidth());
}

bool LvTrackDetailsPanel::eventFilter(QObject* watched, QEvent* event)
{
    // As a shortcut override, so that the key reaches neither a dialog nor the window while a name is edited.
    if (watched == myName && (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress)
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && myName->text() != myShownName) {
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            myName->setText(myShownName);
            myName->selectAll();
            return true;
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

QLabel* LvTrackDetailsPanel::addRow(QFormLayout* layout, const QString& caption, const QString& objectName)
{
    auto* value = new QLabel(layout->parentWidget());
    value->setObjectName(objectName);
    value->setTextFormat(Qt::PlainText); // files may hold markup
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    value->setWordWrap(true);
    value->setAccessibleName(caption);
    layout->addRow(caption, value);
    return value;
}

void LvTrackDetailsPanel::onNameFinished()
{
    if (widget()->isEnabled() && myName->text() != myShownName) {
        myShownName = myName->text();
        Q_EMIT nameEdited(myShownName);
    }
}
