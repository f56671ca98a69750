#include "LvGeoArcEdit.h"
#include "LvLatitude.h"
#include "LvTest.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QTranslator>

#include <cmath>
#include <limits>

namespace
{

// Marks every text with where it is looked up.
class Marker : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int /*count*/) const override
    {
        return QStringLiteral("%1|%2|%3")
            .arg(QString::fromUtf8(context), QString::fromUtf8(source), QString::fromUtf8(disambiguation));
    }
};

struct Children {
    explicit Children(const LvGeoArcEdit& edit)
        : myDegrees(edit.findChildren<QSpinBox*>(QString(), Qt::FindDirectChildrenOnly).at(0))
        , myMinutes(edit.findChildren<QSpinBox*>(QString(), Qt::FindDirectChildrenOnly).at(1))
        , mySeconds(edit.findChild<QDoubleSpinBox*>(QString(), Qt::FindDirectChildrenOnly))
        , myHemisphere(edit.findChild<QComboBox*>(QString(), Qt::FindDirectChildrenOnly))
    {
    }

    QSpinBox* myDegrees;
    QSpinBox* myMinutes;
    QDoubleSpinBox* mySeconds;
    QComboBox* myHemisphere;
};

QString shown(const LvGeoArcEdit& edit)
{
    const Children children(edit);
    return QStringLiteral("%1 %2 %3 %4")
        .arg(children.myHemisphere->currentText(), QString::number(children.myDegrees->value()),
             QString::number(children.myMinutes->value()),
             QString::number(children.mySeconds->value(), 'f', 3));
}

} // namespace

class tst_LvGeoArcEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void children();
    void layout();
    void hemispheres();
    void setGeoArc_data();
    void setGeoArc();
    void geoArc_data();
    void geoArc();
    void roundTrip_data();
    void roundTrip();
    void typing();
    void wrapping();
    void accessibleNames();
    void translation();
    void languageChange();
};

void tst_LvGeoArcEdit::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_LvGeoArcEdit::children()
{
    const LvGeoArcEdit edit(nullptr, true);
    const QList<QWidget*> widgets = edit.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(widgets.size(), qsizetype{4});
    const Children children(edit);
    QCOMPARE(
        widgets,
        (QList<QWidget*>{children.myDegrees, children.myMinutes, children.mySeconds, children.myHemisphere}));

    QCOMPARE(children.myDegrees->minimum(), -360);
    QCOMPARE(children.myDegrees->maximum(), 360);
    QCOMPARE(children.myDegrees->singleStep(), 1);
    QCOMPARE(children.myDegrees->suffix(), QStringLiteral("°"));
    QCOMPARE(children.myDegrees->minimumWidth(), 60);
    QVERIFY(children.myDegrees->wrapping());

    QCOMPARE(children.myMinutes->minimum(), 0);
    QCOMPARE(children.myMinutes->maximum(), 59);
    QCOMPARE(children.myMinutes->singleStep(), 10);
    QCOMPARE(children.myMinutes->suffix(), QStringLiteral("'"));
    QCOMPARE(children.myMinutes->minimumWidth(), 50);
    QVERIFY(children.myMinutes->wrapping());

    QCOMPARE(children.mySeconds->minimum(), 0.0);
    QCOMPARE(children.mySeconds->maximum(), 59.999);
    QCOMPARE(children.mySeconds->singleStep(), 10.0);
    QCOMPARE(children.mySeconds->decimals(), 3);
    QCOMPARE(children.mySeconds->suffix(), QStringLiteral("\""));
    QCOMPARE(children.mySeconds->minimumWidth(), 80);
    QVERIFY(children.mySeconds->wrapping());

    QCOMPARE(edit.geoArc().decimalDegrees(), 0.0);
}

void tst_LvGeoArcEdit::layout()
{
    QWidget parent;
    LvGeoArcEdit edit(&parent, false);
    QCOMPARE(edit.parentWidget(), &parent);
    const auto* row = qobject_cast<QHBoxLayout*>(edit.layout());
    QVERIFY(row != nullptr);
    QCOMPARE(row->contentsMargins(), QMargins());
    QCOMPARE(row->spacing(), 5);
    QCOMPARE(row->count(), 4);
    const Children children(edit);
    QCOMPARE(row->itemAt(0)->widget(), children.myHemisphere);
    QCOMPARE(row->itemAt(1)->widget(), children.myDegrees);
    QCOMPARE(row->itemAt(2)->widget(), children.myMinutes);
    QCOMPARE(row->itemAt(3)->widget(), children.mySeconds);

    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    edit.adjustSize();
    edit.setFocus();
    QTRY_VERIFY(children.myHemisphere->hasFocus());
    for (const QWidget* next :
         {static_cast<QWidget*>(children.myDegrees), static_cast<QWidget*>(children.myMinutes),
          static_cast<QWidget*>(children.mySeconds)}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTRY_COMPARE(QApplication::focusWidget(), next);
    }
}

void tst_LvGeoArcEdit::hemispheres()
{
    const LvGeoArcEdit latitude(nullptr, true);
    const LvGeoArcEdit longitude(nullptr, false);
    for (const auto& [edit, first, second] :
         {std::tuple(&latitude, QStringLiteral("Nord"), QStringLiteral("Süd")),
          std::tuple(&longitude, QStringLiteral("Ost"), QStringLiteral("West"))}) {
        const QComboBox* box = Children(*edit).myHemisphere;
        QCOMPARE(box->count(), 2);
        QCOMPARE(box->itemText(0), first);
        QCOMPARE(box->itemText(1), second);
        QCOMPARE(box->itemData(0), QVariant(1));
        QCOMPARE(box->itemData(1), QVariant(-1));
        QCOMPARE(box->currentIndex(), 0);
        QVERIFY(!box->isEditable());
    }
}

void tst_LvGeoArcEdit::setGeoArc_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("expected");
    QTest::newRow("0") << 0.0 << "Nord 0 0 0.000";
    QTest::newRow("north") << 48.0 + 8.0 / 60 + 30.5 / 3600 << "Nord 48 8 30.500";
    QTest::newRow("south") << -(48.0 + 8.0 / 60 + 30.5 / 3600) << "Süd 48 8 30.500";
    QTest::newRow("-1") << -1.0 << "Süd 1 0 0.000";
    QTest::newRow("between 0 and -1: shown as north") << -0.5 << "Nord 0 30 0.000";
    QTest::newRow("59.9994 seconds") << 7.0 + 59.0 / 60 + 59.9994 / 3600 << "Nord 7 59 59.999";
    QTest::newRow("59.9996 seconds keep their minute")
        << 7.0 + 59.0 / 60 + 59.9996 / 3600 << "Nord 7 59 59.999";
    QTest::newRow("59.9999 seconds, south") << -(7.0 + 3.0 / 60 + 59.9999 / 3600) << "Süd 7 3 59.999";
    QTest::newRow("just below a degree") << std::nextafter(8.0, 0.0) << "Nord 7 59 59.999";
    QTest::newRow("360") << 360.0 << "Nord 360 0 0.000";
    QTest::newRow("-360") << -360.0 << "Süd 360 0 0.000";
    QTest::newRow("no angle") << 720.0 << "Nord 360 0 0.000";
    QTest::newRow("far beyond") << -1e300 << "Süd 360 *";
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << "Nord 360 *";
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << "Nord *";
}

void tst_LvGeoArcEdit::setGeoArc()
{
    QFETCH(double, degrees);
    QFETCH(QString, expected);
    LvGeoArcEdit edit(nullptr, true);
    edit.setGeoArc(LvGeoArc(-12.3)); // something else before
    edit.setGeoArc(LvGeoArc(degrees));
    if (expected.endsWith(u'*')) { // what has no sensible minutes and seconds shows some that are possible
        expected.chop(1);
        QVERIFY2(shown(edit).startsWith(expected), qPrintable(shown(edit)));
        QVERIFY(std::isfinite(edit.geoArc().decimalDegrees()));
        return;
    }
    QCOMPARE(shown(edit), expected);
}

void tst_LvGeoArcEdit::geoArc_data()
{
    QTest::addColumn<int>("hemisphere");
    QTest::addColumn<int>("degrees");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<double>("expected");
    QTest::newRow("north") << 0 << 48 << 8 << 30.5 << 30.5 / 3600 + 8.0 / 60 + 48;
    QTest::newRow("south") << 1 << 48 << 8 << 30.5 << -(30.5 / 3600 + 8.0 / 60 + 48);
    QTest::newRow("negative degrees in the north") << 0 << -48 << 30 << 0.0 << -47.5;
    QTest::newRow("negative degrees in the south: the signs multiply") << 1 << -48 << 0 << 0.0 << 48.0;
    QTest::newRow("only seconds, south") << 1 << 0 << 0 << 36.0 << -0.01;
}

void tst_LvGeoArcEdit::geoArc()
{
    QFETCH(int, hemisphere);
    QFETCH(int, degrees);
    QFETCH(int, minutes);
    QFETCH(double, seconds);
    QFETCH(double, expected);
    const LvGeoArcEdit edit(nullptr, true);
    const Children children(edit);
    children.myHemisphere->setCurrentIndex(hemisphere);
    children.myDegrees->setValue(degrees);
    children.myMinutes->setValue(minutes);
    children.mySeconds->setValue(seconds);
    QCOMPARE(edit.geoArc().decimalDegrees(), expected);
}

void tst_LvGeoArcEdit::roundTrip_data()
{
    QTest::addColumn<bool>("latitude");
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("expected");
    QTest::newRow("north") << true << 53.1401 << 53.1401;
    QTest::newRow("west") << false << -74.0101 << -74.0101;
    QTest::newRow("finer than a thousandth of a second") << false << 8.80000001 << 8.8;
    QTest::newRow("-0.5 comes back positive") << true << -0.5 << 0.5;
    QTest::newRow("date line") << false << -180.0 << -180.0;
}

void tst_LvGeoArcEdit::roundTrip()
{
    QFETCH(bool, latitude);
    QFETCH(double, degrees);
    QFETCH(double, expected);
    LvGeoArcEdit edit(nullptr, latitude);
    edit.setGeoArc(LvGeoArc(degrees));
    const double read = edit.geoArc().decimalDegrees();
    QVERIFY2(std::abs(read - expected) <= 0.0005 / 3600 + 1e-12, qPrintable(QString::number(read, 'f', 10)));
}

void tst_LvGeoArcEdit::typing()
{
    LvGeoArcEdit edit(nullptr, true);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    const Children children(edit);
    children.myDegrees->setFocus();
    children.myDegrees->selectAll();
    QTest::keyClicks(children.myDegrees, QStringLiteral("48"));
    children.myMinutes->selectAll();
    QTest::keyClicks(children.myMinutes, QStringLiteral("8"));
    children.mySeconds->selectAll();
    QTest::keyClicks(children.mySeconds, QStringLiteral("30.5"));
    QTest::keyClick(children.myHemisphere, Qt::Key_Down);
    QCOMPARE(shown(edit), QStringLiteral("Süd 48 8 30.500"));
    QCOMPARE(edit.geoArc(), LvGeoArc(-48.141805555555));
}

void tst_LvGeoArcEdit::wrapping()
{
    LvGeoArcEdit edit(nullptr, true);
    const Children children(edit);
    children.myDegrees->setValue(360);
    children.myDegrees->stepUp();
    QCOMPARE(children.myDegrees->value(), -360);
    children.myMinutes->setValue(59);
    children.myMinutes->stepUp();
    QCOMPARE(children.myMinutes->value(), 0);
    children.mySeconds->stepBy(1);
    QCOMPARE(children.mySeconds->value(), 10.0);
    children.mySeconds->setValue(0.0);
    children.mySeconds->stepDown();
    QCOMPARE(children.mySeconds->value(), 59.999);
}

void tst_LvGeoArcEdit::accessibleNames()
{
    const LvGeoArcEdit latitude(nullptr, true);
    QCOMPARE(latitude.accessibleName(), QStringLiteral("Geografische Breite"));
    const Children north(latitude);
    QCOMPARE(north.myHemisphere->accessibleName(), QStringLiteral("Breite: Himmelsrichtung"));
    QCOMPARE(north.myDegrees->accessibleName(), QStringLiteral("Breite: Grad"));
    QCOMPARE(north.myMinutes->accessibleName(), QStringLiteral("Breite: Minuten"));
    QCOMPARE(north.mySeconds->accessibleName(), QStringLiteral("Breite: Sekunden"));
    const LvGeoArcEdit longitude(nullptr, false);
    QCOMPARE(longitude.accessibleName(), QStringLiteral("Geografische Länge"));
    const Children east(longitude);
    QCOMPARE(east.myHemisphere->accessibleName(), QStringLiteral("Länge: Himmelsrichtung"));
    QCOMPARE(east.myDegrees->accessibleName(), QStringLiteral("Länge: Grad"));
    QCOMPARE(east.myMinutes->accessibleName(), QStringLiteral("Länge: Minuten"));
    QCOMPARE(east.mySeconds->accessibleName(), QStringLiteral("Länge: Sekunden"));
}

void tst_LvGeoArcEdit::translation()
{
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const LvGeoArcEdit latitude(nullptr, true);
    const LvGeoArcEdit longitude(nullptr, false);
    QCoreApplication::removeTranslator(&translator);
    const QString disambiguation = QStringLiteral("COMBOBOX  Coordinate/Nautical bearing");
    // Constructed, so they were looked up; removing a translator does not reach them without an event loop.
    QCOMPARE(Children(latitude).myHemisphere->itemText(0), "LvGeoArcEdit|Nord|" + disambiguation);
    QCOMPARE(Children(latitude).myHemisphere->itemText(1), "LvGeoArcEdit|Süd|" + disambiguation);
    QCOMPARE(Children(longitude).myHemisphere->itemText(0), "LvGeoArcEdit|Ost|" + disambiguation);
    QCOMPARE(Children(longitude).myHemisphere->itemText(1), "LvGeoArcEdit|West|" + disambiguation);
    QCOMPARE(Children(longitude).myDegrees->accessibleName(), QStringLiteral("LvGeoArcEdit|Länge: Grad|"));
}

void tst_LvGeoArcEdit::languageChange()
{
    LvGeoArcEdit edit(nullptr, true);
    edit.setGeoArc(LvGeoArc(-12.5));
    const QComboBox* box = Children(edit).myHemisphere;
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QTRY_VERIFY(box->currentText().startsWith(QStringLiteral("LvGeoArcEdit|Süd|")));
    QVERIFY(edit.accessibleName().startsWith(QLatin1String("LvGeoArcEdit|")));
    QCoreApplication::removeTranslator(&translator);
    QTRY_COMPARE(box->currentText(), QStringLiteral("Süd"));
    QCOMPARE(edit.geoArc().decimalDegrees(), -12.5);
}

LV_TEST_MAIN(tst_LvGeoArcEdit)
#include "tst_LvGeoArcEdit.moc"
