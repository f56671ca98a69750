#include "LvStylePanel.h"

#include "LvColorButton.h"
#include "LvGPXFullShape.h"
#include "LvGPXFullShapeListModel.h"
#include "LvGeoLocationSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSpinBox>

#include <cmath>

namespace
{

constexpr double widestLinePixels = 200.0;
constexpr int unsmoothedStrength = 100; // the share of the recording that is kept, in percent
constexpr int mostSmoothingSteps = 100000;
constexpr double sampleLineWidth = 2.0;

LvGPXTrackConfiguration withAutomaticShape(LvGPXTrackConfiguration configuration)
{
    configuration.setTrackShape(LvGPXTrackShapeEnum::automatic);
    return configuration;
}

/// A piece of line in the style.
QIcon penStyleIcon(int style, const QColor& color, const QSize& size, double pixelRatio)
{
    QPixmap pixmap(size * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QPen pen(color, sampleLineWidth);
    pen.setCapStyle(Qt::FlatCap);
    LvPenStyle(style).modifyPen(pen);
    painter.setPen(pen);
    const double middle = std::floor(size.height() / 2.0);
    painter.drawLine(QPointF(0.0, middle), QPointF(size.width(), middle));
    return {pixmap};
}

QDoubleSpinBox* widthEdit(QWidget* parent, const QString& objectName)
{
    auto* edit = new QDoubleSpinBox(parent);
    edit->setObjectName(objectName);
    edit->setRange(0.0, widestLinePixels);
    edit->setDecimals(1);
    edit->setSuffix(LvStylePanel::tr(" px"));
    edit->setKeyboardTracking(false); // "12" must not be drawn as "1" first
    return edit;
}

} // namespace

LvStylePanel::LvStylePanel(QWidget* parent)
    : QScrollArea(parent)
    , myShapes(new LvGPXFullShapeListModel)
{
    myShapes->setParent(this);
    auto* content = new QWidget(this);
    auto* layout = new QFormLayout(content);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Darstellung der Spur"));

    addShapeRows(layout);
    addLineRows(layout);
    addAreaRows(layout);
    addSmoothingRows(layout);

    myForAll = new QCheckBox(tr("Für alle Spuren"), content);
    myForAll->setObjectName(QStringLiteral("forAll"));
    myForAll->setToolTip(
        tr("Die nächste Änderung gibt allen Spuren diese Darstellung. Ihre Form behalten sie, "
           "solange nicht die Form selbst geändert wird."));
    layout->addRow(myForAll);
    myMakeDefault = new QPushButton(tr("Als Vorgabe verwenden"), content);
    myMakeDefault->setObjectName(QStringLiteral("makeDefault"));
    myMakeDefault->setToolTip(
        tr("Spuren, die ohne eigene Darstellung geladen werden, sehen künftig so aus."));
    layout->addRow(myMakeDefault);
    connect(myMakeDefault, &QPushButton::clicked, this, &LvStylePanel::makeDefault);
    clear();
}

LvStylePanel::~LvStylePanel() = default;

void LvStylePanel::setConfiguredTrack(const LvGPXConfiguredTrack& track)
{
    // A hop is not found out from its points, only from what the track says of itself.
    const LvGPXTrackShape declared = track.track().shape();
    const bool isHop = declared == LvGPXTrackShapeEnum::hop;
    myConfiguration = track.configuration();
    myEffectiveShape = track.effectiveShape();
    const QScopedValueRollback isShowing(myIsShowing, true);
    myShapes->fill(isHop ? declared : track.naturalShape());
    showConfiguration();
    widget()->setEnabled(true);
}

void LvStylePanel::clear()
{
    myConfiguration = LvGPXTrackConfiguration::currentDefaultConfiguration();
    myEffectiveShape = {};
    const QScopedValueRollback isShowing(myIsShowing, true);
    myShapes->fill({});
    showConfiguration();
    widget()->setEnabled(false);
}

QSize LvStylePanel::sizeHint() const
{
    return widget()->sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 2 * frameWidth());
}

void LvStylePanel::changeEvent(QEvent* event)
{
    QScrollArea::changeEvent(event);
    if (myPenStyle != nullptr
        && (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange
            || event->type() == QEvent::FontChange)) {
        fillPenStyles();
    }
}

void LvStylePanel::addShapeRows(QFormLayout* layout)
{
    QWidget* content = layout->parentWidget();
    myShape = new QComboBox(content);
    myShape->setObjectName(QStringLiteral("shape"));
    myShape->setAccessibleName(tr("Form und Marke"));
    myShape->setModel(myShapes);
    layout->addRow(tr("Form:"), myShape);
    connect(myShape, &QComboBox::activated, this, &LvStylePanel::chooseShape);
}

void LvStylePanel::addLineRows(QFormLayout* layout)
{
    QWidget* content = layout->parentWidget();
    myStroke = new QCheckBox(tr("Linie zeichnen"), content);
    myStroke->setObjectName(QStringLiteral("stroke"));
    layout->addRow(myStroke);
    myLineColor = new LvColorButton(content);
    myLineColor->setObjectName(QStringLiteral("lineColor"));
    myLineColor->setAccessibleName(tr("Linienfarbe"));
    myLineColor->setDialogTitle(tr("Linienfarbe wählen"));
    layout->addRow(tr("Linienfarbe:"), myLineColor);
    myLineWidth = widthEdit(content, QStringLiteral("lineWidth"));
    myLineWidth->setAccessibleName(tr("Linienbreite"));
    layout->addRow(tr("Linienbreite:"), myLineWidth);
    myPenStyle = new QComboBox(content);
    myPenStyle->setObjectName(QStringLiteral("penStyle"));
    myPenStyle->setAccessibleName(tr("Linienart"));
    for (const QString& name : {tr("keine"), tr("durchgezogen"), tr("gestrichelt"), tr("gepunktet"),
                                tr("Strich, Punkt"), tr("Strich, zwei Punkte")}) {
        myPenStyle->addItem(name); // the row is the number of the style
    }
    fillPenStyles();
    layout->addRow(tr("Linienart:"), myPenStyle);
    myHaloWidth = widthEdit(content, QStringLiteral("haloWidth"));
    myHaloWidth->setAccessibleName(tr("Breite des Saums"));
    myHaloWidth->setToolTip(tr("Ein heller Saum hebt die Linie von der Karte ab."));
    myHaloWidth->setSpecialValueText(tr("ohne"));
    layout->addRow(tr("Saum:"), myHaloWidth);

    connect(myStroke, &QCheckBox::clicked, this,
            [this](bool on) { setDisplayOption(LvGPXTrackDisplayOptionsEnum::stroke, on); });
    connect(myLineColor, &LvColorButton::colorEdited, this, [this](const QColor& color) {
        edit([&](LvGPXTrackConfiguration& configuration) { return configuration.setLineColor(color); });
    });
    connect(myLineWidth, &QDoubleSpinBox::valueChanged, this, [this](double width) {
        edit([&](LvGPXTrackConfiguration& configuration) { return configuration.setLineWidth(width); });
    });
    connect(myPenStyle, &QComboBox::activated, this, [this](int style) {
        edit([&](LvGPXTrackConfiguration& configuration) { return configuration.setPenStyle(style); });
    });
    connect(myHaloWidth, &QDoubleSpinBox::valueChanged, this, [this](double width) {
        edit([&](LvGPXTrackConfiguration& configuration) { return configuration.setHaloWidth(width); });
    });
}

void LvStylePanel::addAreaRows(QFormLayout* layout)
{
    QWidget* content = layout->parentWidget();
    myFill = new QCheckBox(tr("Fläche füllen"), content);
    myFill->setObjectName(QStringLiteral("fill"));
    layout->addRow(myFill);
    myFillColor = new LvColorButton(content);
    myFillColor->setObjectName(QStringLiteral("fillColor"));
    myFillColor->setAccessibleName(tr("Füllfarbe"));
    myFillColor->setDialogTitle(tr("Füllfarbe wählen"));
    layout->addRow(tr("Füllfarbe:"), myFillColor);
    myInvisibleHint = new QLabel(tr("Ohne Linie und ohne Füllung ist nichts zu sehen."), content);
    myInvisibleHint->setObjectName(QStringLiteral("invisibleHint"));
    myInvisibleHint->setWordWrap(true);
    layout->addRow(myInvisibleHint);

    connect(myFill, &QCheckBox::clicked, this,
            [this](bool on) { setDisplayOption(LvGPXTrackDisplayOptionsEnum::fill, on); });
    connect(myFillColor, &LvColorButton::colorEdited, this, [this](const QColor& color) {
        edit([&](LvGPXTrackConfiguration& configuration) { return configuration.setFillColor(color); });
    });
}

void LvStylePanel::addSmoothingRows(QFormLayout* layout)
{
    QWidget* content = layout->parentWidget();
    mySmoothing = new QSpinBox(content);
    mySmoothing->setObjectName(QStringLiteral("smoothing"));
    mySmoothing->setAccessibleName(tr("Glättung in Prozent"));
    mySmoothing->setToolTip(tr("Wie weit die Punkte zur geraden Linie hin gezogen werden."));
    mySmoothing->setRange(0, unsmoothedStrength);
    mySmoothing->setSingleStep(10);
    mySmoothing->setSuffix(tr(" %"));
    mySmoothing->setSpecialValueText(tr("ohne"));
    mySmoothing->setKeyboardTracking(false);
    layout->addRow(tr("Glättung:"), mySmoothing);
    mySmoothingSteps = new QSpinBox(content);
    mySmoothingSteps->setObjectName(QStringLiteral("smoothingSteps"));
    mySmoothingSteps->setAccessibleName(tr("Abschnitte der Glättung"));
    mySmoothingSteps->setToolTip(tr("In so viele Abschnitte wird die Spur geteilt; je mehr es sind, desto "
                                    "mehr bleibt von ihrem Verlauf."));
    mySmoothingSteps->setRange(1, mostSmoothingSteps);
    mySmoothingSteps->setKeyboardTracking(false);
    layout->addRow(tr("Abschnitte:"), mySmoothingSteps);

    connect(mySmoothing, &QSpinBox::valueChanged, this, [this](int percent) {
        edit([&](LvGPXTrackConfiguration& configuration) {
            return configuration.setSmoothingStrength(unsmoothedStrength - percent);
        });
    });
    connect(mySmoothingSteps, &QSpinBox::valueChanged, this, [this](int steps) {
        edit([&](LvGPXTrackConfiguration& configuration) { return configuration.setSmoothingSteps(steps); });
    });
}

void LvStylePanel::fillPenStyles()
{
    const int height = fontMetrics().height();
    const QSize size(3 * height, height);
    myPenStyle->setIconSize(size);
    for (int style = 0; style < myPenStyle->count(); ++style) {
        QIcon icon =
            penStyleIcon(style, palette().color(QPalette::Active, QPalette::Text), size, devicePixelRatioF());
        myPenStyle->setItemIcon(style, icon);
    }
}

void LvStylePanel::edit(const Change& change, bool isShape)
{
    if (myIsShowing || !change(myConfiguration)) {
        return;
    }
    updateDependents();
    LvGPXTrackConfiguration edited = myConfiguration;
    if (myForAll->isChecked() && !isShape) {
        edited.setTrackShape(LvGPXTrackShapeEnum::unknown);
    }
    Q_EMIT configurationEdited(edited, myForAll->isChecked());
}

void LvStylePanel::setDisplayOption(LvGPXTrackDisplayOptionsEnum option, bool on)
{
    edit([&](LvGPXTrackConfiguration& configuration) {
        const auto bits = static_cast<quint32>(configuration.currentDisplayOptions().value());
        const auto bit = static_cast<quint32>(option);
        return configuration.setCurrentDisplayOptions(
            LvGPXTrackDisplayOptions(on ? bits | bit : bits & ~bit));
    });
}

void LvStylePanel::chooseShape(int row)
{
    const LvGPXFullShape shape = myShapes->markerAt(row);
    if (shape == LvGPXFullShape(myEffectiveShape, myConfiguration.markerShape()).normalized()) {
        return; // a marker that is not drawn makes no other shape
    }
    myEffectiveShape = shape.trackShape();
    edit(
        [&](LvGPXTrackConfiguration& configuration) {
            const bool isOtherShape = configuration.setTrackShape(shape.trackShape());
            const bool isOtherMarker = configuration.setMarkerShape(shape.markerShape());
            return isOtherShape || isOtherMarker;
        },
        true);
}

void LvStylePanel::makeDefault()
{
    // A default with a fixed shape would force it on every new track.
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(withAutomaticShape(myConfiguration));
    updateDependents();
}

void LvStylePanel::showConfiguration()
{
    myLineColor->setColor(myConfiguration.lineColor());
    myLineWidth->setValue(myConfiguration.lineWidth().value());
    myPenStyle->setCurrentIndex(myConfiguration.penStyle().value());
    myHaloWidth->setValue(myConfiguration.haloWidth().value());
    myFillColor->setColor(myConfiguration.fillColor());
    mySmoothing->setValue(unsmoothedStrength - myConfiguration.smoothingStrength());
    mySmoothingSteps->setValue(myConfiguration.smoothingSteps());
    updateDependents();
}

void LvStylePanel::updateDependents()
{
    const LvGPXTrackDisplayOptions options = myConfiguration.currentDisplayOptions();
    myShapes->setDisplayOptions(options);
    myShapes->setStrokeColor(myConfiguration.lineColor());
    myShapes->setFillColor(myConfiguration.fillColor());
    myShape->setCurrentIndex(
        myShapes->indexOf(LvGPXFullShape(myEffectiveShape, myConfiguration.markerShape())));
    myShape->setEnabled(myShapes->rowCount() > 1);

    const bool hasFill = myConfiguration.hasDrawOption(LvGPXTrackDisplayOptionsEnum::fill);
    const bool mayFill =
        myEffectiveShape.availableDisplayOptions().reducedTo(LvGPXTrackDisplayOptionsEnum::fill)
        == LvGPXTrackDisplayOptionsEnum::fill;
    myStroke->setChecked(myConfiguration.hasDrawOption(LvGPXTrackDisplayOptionsEnum::stroke));
    myFill->setChecked(hasFill);
    myFill->setEnabled(mayFill || hasFill);
    myFillColor->setEnabled(hasFill);
    myInvisibleHint->setVisible(myShapes->wouldBeInvisible());
    // What is written down has whole pixels, so that is what counts for being the default already.
    const LvGPXTrackConfiguration current = LvGPXTrackConfiguration::currentDefaultConfiguration();
    myMakeDefault->setEnabled(withAutomaticShape(myConfiguration).serialize()
                              != withAutomaticShape(current).serialize());
}
