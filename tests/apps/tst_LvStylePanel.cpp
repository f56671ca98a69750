#include "LvColorButton.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoLocationSettings.h"
#include "LvStylePanel.h"
#include "LvTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

namespace
{

LvGPXTrack lineTrack()
{
    const auto point = [](double latitude, double longitude) {
        return LvGPXTrackPoint({latitude, longitude}, 0, {}, {});
    };
    return {QStringLiteral("line"),
            {},
            {LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(53.0, 8.0), point(53.1, 8.1), point(53.0, 8.2)})},
            LvGPXTrackShapeEnum::linestring};
}

LvGPXTrack areaTrack()
{
    const auto point = [](double latitude, double longitude) {
        return LvGPXTrackPoint({latitude, longitude}, 0, {}, {});
    };
    return {QStringLiteral("area"),
            {},
            {LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(53.0, 8.0), point(53.1, 8.1), point(53.0, 8.2),
                                                      point(53.0, 8.0)})},
            LvGPXTrackShapeEnum::polygon};
}

LvGPXConfiguredTrack line()
{
    return {lineTrack(), LvGPXTrackConfiguration::defaultValue()};
}

LvGPXConfiguredTrack area()
{
    return {areaTrack(), LvGPXTrackConfiguration::defaultValue()};
}

LvGPXConfiguredTrack pointTrack()
{
    return {LvGPXTrackPoint({53.0, 8.0}, 0, {}, QStringLiteral("point")),
            LvGPXTrackConfiguration::defaultValue()};
}

/// A panel with what it has sent.
struct Panel : LvStylePanel {
    Panel()
        : spy(this, &LvStylePanel::configurationEdited)
    {
    }

    template <class Widget>
    Widget* part(const char* name)
    {
        return findChild<Widget*>(QString::fromLatin1(name));
    }

    QCheckBox* check(const char* name) { return part<QCheckBox>(name); }

    QComboBox* combo(const char* name) { return part<QComboBox>(name); }

    void choose(const char* name, int row)
    {
        combo(name)->setCurrentIndex(row);
        Q_EMIT combo(name)->activated(row);
    }

    /// The configuration of the only signal since the last call.
    LvGPXTrackConfiguration sent()
    {
        if (spy.size() != 1) {
            qWarning("%d signals instead of one", static_cast<int>(spy.size()));
            return {};
        }
        const QList<QVariant> arguments = spy.takeFirst();
        isForAll = arguments.at(1).toBool();
        return arguments.at(0).value<LvGPXTrackConfiguration>();
    }

    QSignalSpy spy;
    bool isForAll = false;
};

} // namespace

class tst_LvStylePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutTrack();
    void settingATrackIsSilent();
    void showsTheConfiguration();
    void editsOneProperty_data();
    void editsOneProperty();
    void equalValuesAreSilent();
    void displayOptions();
    void fillDependsOnTheShape();
    void invisibleHint();
    void shapesOfATrack_data();
    void shapesOfATrack();
    void choosesShapeAndMarker();
    void iconsFollowTheColors();
    void penStyleIconsFollowThePalette();
    void forAll();
    void keepsWhatItCannotShow();
    void makesTheDefault();
    void keyboardEditsOnce();
    void accessibility();
};

void tst_LvStylePanel::init()
{
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
}

void tst_LvStylePanel::withoutTrack()
{
    Panel panel;
    QVERIFY(!panel.widget()->isEnabled());
    QCOMPARE(panel.combo("shape")->count(), 0);
    panel.setConfiguredTrack(line());
    QVERIFY(panel.widget()->isEnabled());
    panel.clear();
    QVERIFY(!panel.widget()->isEnabled());
    QCOMPARE(panel.combo("shape")->count(), 0);
    QCOMPARE(panel.spy.size(), 0);
}

void tst_LvStylePanel::settingATrackIsSilent()
{
    Panel panel;
    LvGPXTrackConfiguration other(Qt::red, 3.0, Qt::blue, 7.0, LvGPXTrackDisplayOptionsEnum::fill,
                                  LvGPXMarkerShapeEnum::arrow, LvGPXTrackShapeEnum::linestring, Qt::DotLine,
                                  40, 12);
    panel.setConfiguredTrack(line());
    panel.setConfiguredTrack({lineTrack(), other});
    panel.setConfiguredTrack(area());
    panel.setConfiguredTrack(pointTrack());
    QCOMPARE(panel.spy.size(), 0);
}

void tst_LvStylePanel::showsTheConfiguration()
{
    Panel panel;
    const LvGPXTrackConfiguration configuration(
        QColor(1, 2, 3, 4), 3.5, QColor(5, 6, 7, 8), 7.0, LvGPXTrackDisplayOptionsEnum::fill,
        LvGPXMarkerShapeEnum::arrow, LvGPXTrackShapeEnum::linestring, Qt::DotLine, 40, 12);
    panel.setConfiguredTrack({lineTrack(), configuration});
    QVERIFY(panel.configuration() == configuration);
    QCOMPARE(panel.part<LvColorButton>("lineColor")->color(), QColor(1, 2, 3, 4));
    QCOMPARE(panel.part<QDoubleSpinBox>("lineWidth")->value(), 3.5);
    QCOMPARE(panel.combo("penStyle")->currentIndex(), static_cast<int>(Qt::DotLine));
    QCOMPARE(panel.part<LvColorButton>("fillColor")->color(), QColor(5, 6, 7, 8));
    QCOMPARE(panel.part<QDoubleSpinBox>("haloWidth")->value(), 7.0);
    QCOMPARE(panel.check("stroke")->isChecked(), false);
    QCOMPARE(panel.check("fill")->isChecked(), true);
    QCOMPARE(panel.part<QSpinBox>("smoothing")->value(), 60);
    QCOMPARE(panel.part<QSpinBox>("smoothingSteps")->value(), 12);
    QCOMPARE(panel.combo("shape")->currentText(), QStringLiteral("Pfeil"));
    QCOMPARE(panel.combo("shape")->currentIndex(), 2);
}

void tst_LvStylePanel::editsOneProperty_data()
{
    QTest::addColumn<int>("property");
    const QStringList names{"line colour", "line width", "pen style",      "halo width",
                            "fill colour", "smoothing",  "smoothing steps"};
    for (int i = 0; i < names.size(); ++i) {
        QTest::newRow(qPrintable(names.at(i))) << i;
    }
}

void tst_LvStylePanel::editsOneProperty()
{
    QFETCH(int, property);
    Panel panel;
    panel.setConfiguredTrack(area());
    LvGPXTrackConfiguration expected = area().configuration();
    const QColor color(10, 20, 30, 40);
    switch (property) {
    case 0:
        expected.setLineColor(color);
        Q_EMIT panel.part<LvColorButton>("lineColor")->colorEdited(color);
        break;
    case 1:
        expected.setLineWidth(4.5);
        panel.part<QDoubleSpinBox>("lineWidth")->setValue(4.5);
        break;
    case 2:
        expected.setPenStyle(Qt::DashDotLine);
        panel.choose("penStyle", Qt::DashDotLine);
        break;
    case 3:
        expected.setHaloWidth(6.0);
        panel.part<QDoubleSpinBox>("haloWidth")->setValue(6.0);
        break;
    case 4:
        expected.setFillColor(color);
        Q_EMIT panel.part<LvColorButton>("fillColor")->colorEdited(color);
        break;
    case 5:
        expected.setSmoothingStrength(25);
        panel.part<QSpinBox>("smoothing")->setValue(75);
        break;
    default:
        expected.setSmoothingSteps(30);
        panel.part<QSpinBox>("smoothingSteps")->setValue(30);
    }
    QVERIFY(panel.sent() == expected);
    QCOMPARE(panel.isForAll, false);
    QVERIFY(panel.configuration() == expected);
}

void tst_LvStylePanel::equalValuesAreSilent()
{
    Panel panel;
    panel.setConfiguredTrack(line());
    panel.choose("penStyle", Qt::SolidLine);
    Q_EMIT panel.part<LvColorButton>("lineColor")->colorEdited(line().lineColor());
    panel.choose("shape", panel.combo("shape")->currentIndex());
    QCOMPARE(panel.spy.size(), 0);
}

void tst_LvStylePanel::displayOptions()
{
    Panel panel;
    panel.setConfiguredTrack(area());
    panel.check("fill")->click();
    LvGPXTrackDisplayOptions both(LvGPXTrackDisplayOptionsEnum::stroke);
    both |= LvGPXTrackDisplayOptionsEnum::fill;
    QVERIFY(panel.sent().currentDisplayOptions() == both);
    panel.check("stroke")->click();
    QVERIFY(panel.sent().currentDisplayOptions() == LvGPXTrackDisplayOptionsEnum::fill);
    panel.check("fill")->click();
    QVERIFY(panel.sent().currentDisplayOptions() == LvGPXTrackDisplayOptionsEnum::none);

    // The flag without a name is carried along.
    LvGPXTrackConfiguration nameless = pointTrack().configuration();
    nameless.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(5));
    LvGPXConfiguredTrack track = pointTrack();
    track.setConfiguration(nameless);
    panel.setConfiguredTrack(track);
    panel.check("fill")->click();
    QVERIFY(panel.sent().currentDisplayOptions() == LvGPXTrackDisplayOptions(7));
}

void tst_LvStylePanel::fillDependsOnTheShape()
{
    Panel panel;
    panel.setConfiguredTrack(line());
    QVERIFY(!panel.check("fill")->isEnabled());
    panel.choose("shape", 0); // as an area
    QVERIFY(panel.check("fill")->isEnabled());
    QVERIFY(!panel.part<LvColorButton>("fillColor")->isEnabled());
    panel.check("fill")->click();
    QVERIFY(panel.part<LvColorButton>("fillColor")->isEnabled());
    panel.choose("shape", 1); // what is set can be taken away
    QVERIFY(panel.check("fill")->isEnabled());
    panel.check("fill")->click();
    QVERIFY(!panel.check("fill")->isEnabled());
    panel.setConfiguredTrack(pointTrack());
    QVERIFY(panel.check("fill")->isEnabled());
}

void tst_LvStylePanel::invisibleHint()
{
    Panel panel;
    panel.setConfiguredTrack(area());
    const auto* hint = panel.part<QLabel>("invisibleHint");
    QVERIFY(hint->isHidden());
    panel.check("stroke")->click();
    QVERIFY(!hint->isHidden());
    panel.check("fill")->click();
    QVERIFY(hint->isHidden());
}

void tst_LvStylePanel::shapesOfATrack_data()
{
    QTest::addColumn<LvGPXConfiguredTrack>("track");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("current");
    QTest::newRow("line") << line() << QStringList{"Fläche", "Strecke", "Pfeil"} << 1;
    QTest::newRow("area") << area() << QStringList(QList<QString>(9, "Punkt")) + QStringList("Fläche") << 9;
    QTest::newRow("point") << pointTrack() << QStringList(QList<QString>(9, "Punkt")) << 0;
    LvGPXTrack hop = lineTrack();
    hop.setShape(LvGPXTrackShapeEnum::hop);
    LvGPXTrackConfiguration asHop;
    asHop.setTrackShape(LvGPXTrackShapeEnum::hop);
    QTest::newRow("hop") << LvGPXConfiguredTrack(hop, asHop) << QStringList{"Fluglinie"} << 0;
}

void tst_LvStylePanel::shapesOfATrack()
{
    QFETCH(LvGPXConfiguredTrack, track);
    QFETCH(QStringList, texts);
    QFETCH(int, current);
    Panel panel;
    panel.setConfiguredTrack(track);
    QStringList actual;
    for (int row = 0; row < panel.combo("shape")->count(); ++row) {
        actual.append(panel.combo("shape")->itemText(row));
    }
    QCOMPARE(actual, texts);
    QCOMPARE(panel.combo("shape")->currentIndex(), current);
    QCOMPARE(panel.combo("shape")->isEnabled(), texts.size() > 1);
}

void tst_LvStylePanel::choosesShapeAndMarker()
{
    Panel panel;
    panel.setConfiguredTrack(line());
    panel.choose("shape", 2);
    LvGPXTrackConfiguration sent = panel.sent();
    QVERIFY(sent.trackShape() == LvGPXTrackShapeEnum::linestring);
    QVERIFY(sent.markerShape() == LvGPXMarkerShapeEnum::arrow);
    panel.choose("shape", 0);
    sent = panel.sent();
    QVERIFY(sent.trackShape() == LvGPXTrackShapeEnum::polygon);
    QCOMPARE(panel.combo("shape")->currentIndex(), 0);
    panel.setConfiguredTrack(pointTrack());
    panel.choose("shape", 5);
    sent = panel.sent();
    QVERIFY(sent.markerShape() == LvGPXMarkerShapeEnum::x);
    QCOMPARE(panel.combo("shape")->currentIndex(), 5);
    QVERIFY(!panel.combo("shape")->itemIcon(5).isNull());
}

void tst_LvStylePanel::iconsFollowTheColors()
{
    Panel panel;
    panel.setConfiguredTrack(pointTrack());
    const auto block = [&] { return panel.combo("shape")->itemIcon(6).pixmap(32, 32).toImage(); };
    const QImage before = block();
    QCOMPARE(before.pixelColor(16, 16).alpha(), 0); // outline only
    panel.check("fill")->click();
    QVERIFY(block() != before);
    Q_EMIT panel.part<LvColorButton>("fillColor")->colorEdited(Qt::blue);
    QCOMPARE(block().pixelColor(16, 16), QColor(Qt::blue));
}

void tst_LvStylePanel::penStyleIconsFollowThePalette()
{
    Panel panel;
    QPalette palette = panel.palette();
    palette.setColor(QPalette::Text, Qt::magenta);
    panel.setPalette(palette);
    const QSize size = panel.combo("penStyle")->iconSize();
    QList<QImage> pictures;
    for (int style = 0; style < panel.combo("penStyle")->count(); ++style) {
        const QImage picture = panel.combo("penStyle")->itemIcon(style).pixmap(size).toImage();
        QVERIFY(!pictures.contains(picture)); // every style looks different
        pictures.append(picture);
    }
    QCOMPARE(pictures.size(), 6);
    QCOMPARE(pictures.at(Qt::SolidLine).pixelColor(size.width() / 2, size.height() / 2), QColor(Qt::magenta));
}

void tst_LvStylePanel::forAll()
{
    Panel panel;
    panel.setConfiguredTrack(line());
    panel.check("forAll")->click();
    QCOMPARE(panel.spy.size(), 0);
    panel.part<QDoubleSpinBox>("lineWidth")->setValue(3.0);
    LvGPXTrackConfiguration sent = panel.sent();
    QVERIFY(panel.isForAll);
    QCOMPARE(sent.lineWidth().value(), 3.0);
    QVERIFY(sent.trackShape() == LvGPXTrackShapeEnum::unknown); // every track keeps its own
    QVERIFY(panel.configuration().trackShape() == LvGPXTrackShapeEnum::linestring);
    LvGPXConfiguredTrack other = area();
    other.setConfiguration(sent);
    QVERIFY(other.effectiveShape() == LvGPXTrackShapeEnum::polygon);

    panel.choose("shape", 0);
    sent = panel.sent();
    QVERIFY(panel.isForAll);
    QVERIFY(sent.trackShape() == LvGPXTrackShapeEnum::polygon);
}

void tst_LvStylePanel::keepsWhatItCannotShow()
{
    Panel panel;
    LvGPXTrackConfiguration odd = line().configuration();
    odd.setLineWidth(7.77);
    odd.setHaloWidth(1000.0);
    odd.setSmoothingStrength(250);
    odd.setSmoothingSteps(-3);
    panel.setConfiguredTrack({lineTrack(), odd});
    QCOMPARE(panel.spy.size(), 0);
    panel.choose("penStyle", Qt::DotLine);
    odd.setPenStyle(Qt::DotLine);
    QVERIFY(panel.sent() == odd);
}

void tst_LvStylePanel::makesTheDefault()
{
    Panel panel;
    auto* button = panel.part<QPushButton>("makeDefault");
    panel.setConfiguredTrack(line());
    QVERIFY(!button->isEnabled()); // it is the default
    panel.part<QDoubleSpinBox>("lineWidth")->setValue(3.0);
    QVERIFY(button->isEnabled());
    panel.spy.clear();
    button->click();
    QCOMPARE(panel.spy.size(), 0);
    QVERIFY(!button->isEnabled());
    const LvGPXTrackConfiguration stored = LvGPXTrackConfiguration::currentDefaultConfiguration();
    QCOMPARE(stored.lineWidth().value(), 3.0);
    QVERIFY(stored.trackShape() == LvGPXTrackShapeEnum::automatic);
    panel.part<QDoubleSpinBox>("lineWidth")->setValue(4.0);
    QVERIFY(button->isEnabled());
}

void tst_LvStylePanel::keyboardEditsOnce()
{
    Panel panel;
    panel.setConfiguredTrack(line());
    auto* width = panel.part<QDoubleSpinBox>("lineWidth");
    width->selectAll();
    QTest::keyClicks(width, QStringLiteral("12"));
    QCOMPARE(panel.spy.size(), 0); // not a 1 on the way
    QTest::keyClick(width, Qt::Key_Return);
    QCOMPARE(panel.sent().lineWidth().value(), 12.0);
    QTest::keyClick(width, Qt::Key_Up);
    QCOMPARE(panel.sent().lineWidth().value(), 13.0);
    QTest::keyClick(panel.check("stroke"), Qt::Key_Space);
    QVERIFY(panel.sent().currentDisplayOptions() == LvGPXTrackDisplayOptionsEnum::none);
}

void tst_LvStylePanel::accessibility()
{
    Panel panel;
    for (const char* name : {"shape", "lineColor", "lineWidth", "penStyle", "haloWidth", "fillColor",
                             "smoothing", "smoothingSteps"}) {
        auto* editor = panel.part<QWidget>(name);
        QVERIFY2(!editor->accessibleName().isEmpty(), name);
        const auto* layout = qobject_cast<QFormLayout*>(panel.widget()->layout());
        const auto* label = qobject_cast<QLabel*>(layout->labelForField(editor));
        QVERIFY2(label != nullptr && label->buddy() == editor, name);
        QVERIFY2(!label->text().contains(u'&'), name);
    }
    // The keyboard goes from top to bottom.
    QStringList order;
    for (const QWidget* widget = panel.part<QWidget>("shape")->nextInFocusChain();
         widget != panel.part<QWidget>("shape"); widget = widget->nextInFocusChain()) {
        if (widget->focusPolicy() != Qt::NoFocus && widget->parentWidget() == panel.widget()) {
            order.append(widget->objectName());
        }
    }
    QCOMPARE(order,
             (QStringList{"stroke", "lineColor", "lineWidth", "penStyle", "haloWidth", "fill", "fillColor",
                          "smoothing", "smoothingSteps", "forAll", "makeDefault"}));
}

LV_TEST_MAIN(tst_LvStylePanel)
#include "tst_LvStylePanel.moc"
