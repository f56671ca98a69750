#include "LvPlaceEdit.h"

#include "LvCoordinateText.h"
#include "LvGeoArcEdit.h"
#include "LvGeoPositionSamples.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>

namespace
{

constexpr int lastSample = static_cast<int>(LvGeoPositionSamplesEnum::Passau);
constexpr int westOrSouth = 1; // the second hemisphere of an angle's editor

bool isInRange(const LvGeoPosition& position)
{
    return position.isValid() && position.latitude().isInValidRange()
        && position.longitude().isInValidRange();
}

} // namespace

LvPlaceEdit::LvPlaceEdit(const QString& title, QWidget* parent)
    : QGroupBox(title, parent)
    , myText(new QLineEdit(this))
    , mySamples(new QComboBox(this))
    , myLatitude(new LvGeoArcEdit(this, true))
    , myLongitude(new LvGeoArcEdit(this, false))
    , myError(new QLabel(this))
{
    myText->setObjectName(QStringLiteral("text"));
    myText->setAccessibleName(tr("%1: Koordinaten", "start or end of a line").arg(title));
    myText->setPlaceholderText(tr("z. B. 53,14 N 8,80 O"));
    myText->setToolTip(
        tr("Hier kann man Koordinaten in jeder üblichen Schreibweise einfügen, auch die Adresse "
           "einer Karte im Internet."));
    myText->setClearButtonEnabled(true);
    mySamples->setObjectName(QStringLiteral("samples"));
    mySamples->setAccessibleName(tr("%1: Ort aus der Liste", "start or end of a line").arg(title));
    mySamples->addItem(tr("(kein Ort aus der Liste)"));
    for (int sample = 0; sample <= lastSample; ++sample) {
        mySamples->addItem(LvGeoPositionSamples::name(static_cast<LvGeoPositionSamplesEnum>(sample)));
    }
    auto* pick = new QPushButton(tr("Auf der Karte wählen"), this);
    pick->setObjectName(QStringLiteral("pick"));
    pick->setAccessibleName(tr("%1: auf der Karte wählen", "start or end of a line").arg(title));
    pick->setAutoDefault(false);
    myLatitude->setObjectName(QStringLiteral("latitude"));
    myLongitude->setObjectName(QStringLiteral("longitude"));
    myError->setObjectName(QStringLiteral("error"));
    myError->setWordWrap(true);
    myError->setTextFormat(Qt::PlainText);

    auto* layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addRow(tr("Koordinaten:"), myText);
    layout->addRow(tr("Ort:"), mySamples);
    layout->addRow(QString(), pick);
    layout->addRow(tr("Breite:"), myLatitude);
    layout->addRow(tr("Länge:"), myLongitude);
    layout->addRow(myError);

    connect(myText, &QLineEdit::textEdited, this, &LvPlaceEdit::onTextEdited);
    connect(mySamples, &QComboBox::activated, this, &LvPlaceEdit::onSampleChosen);
    connect(pick, &QPushButton::clicked, this, &LvPlaceEdit::pickRequested);
    connectEditors(myLatitude, true);
    connectEditors(myLongitude, false);
    showAngles();
    updateError();
}

LvPlaceEdit::~LvPlaceEdit() = default;

LvGeoPosition LvPlaceEdit::position() const
{
    return errorText().isEmpty() && isInRange(myPosition) ? myPosition : LvGeoPosition();
}

void LvPlaceEdit::setPosition(const LvGeoPosition& position)
{
    myPosition = position;
    myText->clear();
    mySamples->setCurrentIndex(0);
    showAngles();
    updateError();
    Q_EMIT positionChanged();
}

QString LvPlaceEdit::placeName() const
{
    return mySamples->currentIndex() > 0 ? mySamples->currentText() : QString();
}

QString LvPlaceEdit::errorText() const
{
    const QString text = myText->text().trimmed();
    if (!text.isEmpty() && !LvCoordinateText::parse(text).isValid()) {
        return tr("„%1“ ist keine Position, oder man kann es auf mehr als eine Weise lesen.")
            .arg(text.left(40));
    }
    if (myPosition.isValid() && !myPosition.latitude().isInValidRange()) {
        return tr("Die Breite liegt nicht zwischen 90° Süd und 90° Nord.");
    }
    if (myPosition.isValid() && !myPosition.longitude().isInValidRange()) {
        return tr("Die Länge liegt nicht zwischen 180° West und 180° Ost.");
    }
    return {};
}

void LvPlaceEdit::onTextEdited(const QString& text)
{
    const LvGeoPosition position = LvCoordinateText::parse(text);
    mySamples->setCurrentIndex(0);
    if (position.isValid()) {
        myPosition = position;
        showAngles();
    }
    updateError();
    Q_EMIT positionChanged();
}

void LvPlaceEdit::onSampleChosen(int row)
{
    if (row > 0) {
        myPosition = LvGeoPositionSamples().position(static_cast<LvGeoPositionSamplesEnum>(row - 1));
        myText->clear();
        showAngles();
        updateError();
    }
    Q_EMIT positionChanged();
}

void LvPlaceEdit::onArcEdited(bool isLatitude)
{
    if (myIsShowing) {
        return;
    }
    const bool hadPosition = myPosition.isValid();
    if (isLatitude || !hadPosition) {
        myPosition.setLatitude(LvLatitude(myLatitude->geoArc()));
    }
    if (!isLatitude || !hadPosition) {
        myPosition.setLongitude(LvLongitude(myLongitude->geoArc()));
    }
    myText->clear();
    mySamples->setCurrentIndex(0);
    updateError();
    Q_EMIT positionChanged();
}

void LvPlaceEdit::showAngles()
{
    const QScopedValueRollback isShowing(myIsShowing, true);
    const LvGeoPosition shown = myPosition.isValid() ? myPosition : LvGeoPosition::null();
    showAngle(myLatitude, shown.latitude());
    showAngle(myLongitude, shown.longitude());
}

void LvPlaceEdit::updateError()
{
    myError->setText(errorText());
    myError->setVisible(!myError->text().isEmpty());
}

void LvPlaceEdit::connectEditors(LvGeoArcEdit* edit, bool isLatitude)
{
    const auto changed = [this, isLatitude] { onArcEdited(isLatitude); };
    for (QSpinBox* box : edit->findChildren<QSpinBox*>()) {
        connect(box, &QSpinBox::valueChanged, this, changed);
    }
    for (QDoubleSpinBox* box : edit->findChildren<QDoubleSpinBox*>()) {
        connect(box, &QDoubleSpinBox::valueChanged, this, changed);
    }
    for (QComboBox* box : edit->findChildren<QComboBox*>()) {
        connect(box, &QComboBox::currentIndexChanged, this, changed);
    }
}

void LvPlaceEdit::showAngle(LvGeoArcEdit* edit, const LvGeoArc& angle)
{
    edit->setGeoArc(angle);
    // The editor goes by whole degrees: half a degree west would show as east.
    if (angle.decimalDegrees() < 0.0 && angle.degree() == 0) {
        edit->findChild<QComboBox*>()->setCurrentIndex(westOrSouth);
    }
}
