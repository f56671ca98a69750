#include "LvGeoArcEdit.h"
#include "LvGeoPositionSamples.h"
#include "LvPlaceEdit.h"
#include "LvTest.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

namespace
{

struct Place : LvPlaceEdit {
    Place()
        : LvPlaceEdit(QStringLiteral("Von"))
        , text(findChild<QLineEdit*>(QStringLiteral("text")))
        , samples(findChild<QComboBox*>(QStringLiteral("samples")))
        , latitude(findChild<LvGeoArcEdit*>(QStringLiteral("latitude")))
        , longitude(findChild<LvGeoArcEdit*>(QStringLiteral("longitude")))
        , error(findChild<QLabel*>(QStringLiteral("error")))
        , spy(this, &LvPlaceEdit::positionChanged)
    {
    }

    void type(const QString& input)
    {
        text->selectAll();
        QTest::keyClicks(text, input);
    }

    void chooseSample(LvGeoPositionSamplesEnum sample)
    {
        const int row = static_cast<int>(sample) + 1;
        samples->setCurrentIndex(row);
        Q_EMIT samples->activated(row);
    }

    [[nodiscard]] bool showsAngles(double north, double east) const
    {
        constexpr double shownDegrees = 1e-6; // the editors show thousandths of a second
        return std::abs(latitude->geoArc().decimalDegrees() - north) < shownDegrees
            && std::abs(longitude->geoArc().decimalDegrees() - east) < shownDegrees;
    }

    QLineEdit* text;
    QComboBox* samples;
    LvGeoArcEdit* latitude;
    LvGeoArcEdit* longitude;
    QLabel* error;
    QSignalSpy spy;
};

} // namespace

class tst_LvPlaceEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void pastedText_data();
    void pastedText();
    void unreadableText();
    void samplePositions();
    void anglesKeepTheOtherOneExact();
    void anglesWithoutPosition();
    void halfADegreeWest();
    void anglesOutOfRange();
    void setPosition();
    void setPositionIsExact();
    void oneInputTakesTheOtherBack();
    void pick();
    void accessibility();
};

void tst_LvPlaceEdit::startsEmpty()
{
    const Place place;
    QVERIFY(!place.position().isValid());
    QVERIFY(place.error->isHidden());
    QVERIFY(place.errorText().isEmpty());
    QVERIFY(place.placeName().isEmpty());
    QCOMPARE(place.samples->count(), 14);
}

void tst_LvPlaceEdit::pastedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("decimal") << "53.14 -8.8";
    QTest::newRow("comma") << "53,14; -8,8";
    QTest::newRow("minutes") << "N 53° 8.4' W 8° 48'";
    QTest::newRow("address") << "geo:53.14,-8.8";
}

void tst_LvPlaceEdit::pastedText()
{
    QFETCH(QString, text);
    Place place;
    place.type(text);
    QVERIFY(place.position() == LvGeoPosition(53.14, -8.8));
    QVERIFY(place.showsAngles(53.14, -8.8));
    QVERIFY(place.error->isHidden());
    QCOMPARE(place.text->text(), text); // what was pasted stays to be seen
    QVERIFY(!place.spy.isEmpty());
}

void tst_LvPlaceEdit::unreadableText()
{
    Place place;
    place.type(QStringLiteral("53.14 8.8"));
    place.type(QStringLiteral("somewhere"));
    QVERIFY(!place.position().isValid()); // not the place from before
    QVERIFY(!place.error->isHidden());
    QVERIFY(place.errorText().contains(QStringLiteral("somewhere")));
    QCOMPARE(place.error->textFormat(), Qt::PlainText);
    place.text->selectAll();
    QTest::keyClick(place.text, Qt::Key_Delete);
    QVERIFY(place.error->isHidden());
    QVERIFY(place.showsAngles(53.14, 8.8));
    QVERIFY(place.position() == LvGeoPosition(53.14, 8.8)); // what the angles show
}

void tst_LvPlaceEdit::samplePositions()
{
    Place place;
    for (int i = 0; i <= static_cast<int>(LvGeoPositionSamplesEnum::Passau); ++i) {
        const auto sample = static_cast<LvGeoPositionSamplesEnum>(i);
        place.chooseSample(sample);
        const LvGeoPosition expected = LvGeoPositionSamples().position(sample);
        QVERIFY(place.position() == expected);
        QCOMPARE(place.placeName(), LvGeoPositionSamples::name(sample));
        QVERIFY(
            place.showsAngles(expected.latitude().decimalDegrees(), expected.longitude().decimalDegrees()));
    }
    QCOMPARE(place.spy.size(), 13);
}

void tst_LvPlaceEdit::anglesKeepTheOtherOneExact()
{
    Place place;
    place.setPosition({53.123456789, 8.123456789});
    auto* degrees = place.latitude->findChild<QSpinBox*>();
    degrees->setValue(54);
    // Latitude as its editor shows it, longitude as it came.
    QVERIFY(std::abs(place.position().latitude().decimalDegrees() - 54.123456789) < 1e-6);
    QCOMPARE(place.position().longitude().decimalDegrees(), 8.123456789);
}

void tst_LvPlaceEdit::anglesWithoutPosition()
{
    Place place;
    place.latitude->findChild<QSpinBox*>()->setValue(53);
    QVERIFY(place.position() == LvGeoPosition(53.0, 0.0));
    place.longitude->findChild<QComboBox*>()->setCurrentIndex(1);
    place.longitude->findChild<QDoubleSpinBox*>()->setValue(36.0);
    QVERIFY(place.position() == LvGeoPosition(53.0, -0.01));
}

void tst_LvPlaceEdit::halfADegreeWest()
{
    Place place;
    place.setPosition({-0.25, -0.5});
    QVERIFY(place.showsAngles(-0.25, -0.5));
    place.setPosition({0.25, 0.5});
    QVERIFY(place.showsAngles(0.25, 0.5));
    place.setPosition({-10.5, -170.25});
    QVERIFY(place.showsAngles(-10.5, -170.25));
}

void tst_LvPlaceEdit::anglesOutOfRange()
{
    Place place;
    place.setPosition({53.0, 8.0});
    place.latitude->findChild<QSpinBox*>()->setValue(91);
    QVERIFY(!place.position().isValid());
    QVERIFY(!place.error->isHidden());
    place.latitude->findChild<QSpinBox*>()->setValue(90);
    QVERIFY(place.position().isValid());
    place.longitude->findChild<QSpinBox*>()->setValue(181);
    QVERIFY(!place.position().isValid());
    QVERIFY(place.errorText().contains(QStringLiteral("180")));
}

void tst_LvPlaceEdit::setPosition()
{
    Place place;
    place.type(QStringLiteral("nowhere"));
    place.spy.clear();
    place.setPosition({53.14, 8.8});
    QCOMPARE(place.spy.size(), 1);
    QVERIFY(place.position() == LvGeoPosition(53.14, 8.8));
    QVERIFY(place.text->text().isEmpty());
    place.setPosition({});
    QVERIFY(!place.position().isValid());
    QVERIFY(place.showsAngles(0.0, 0.0));
    QVERIFY(place.error->isHidden());
}

void tst_LvPlaceEdit::setPositionIsExact()
{
    Place place;
    place.setPosition({53.123456789012, 8.123456789012});
    QCOMPARE(place.position().latitude().decimalDegrees(), 53.123456789012);
    QCOMPARE(place.position().longitude().decimalDegrees(), 8.123456789012);
}

void tst_LvPlaceEdit::oneInputTakesTheOtherBack()
{
    Place place;
    place.chooseSample(LvGeoPositionSamplesEnum::Bremen);
    place.type(QStringLiteral("53.14 8.8"));
    QCOMPARE(place.placeName(), QString());
    place.chooseSample(LvGeoPositionSamplesEnum::Bremen);
    QCOMPARE(place.text->text(), QString());
    place.latitude->findChild<QSpinBox*>()->setValue(10);
    QCOMPARE(place.placeName(), QString());
}

void tst_LvPlaceEdit::pick()
{
    Place place;
    QSignalSpy spy(&place, &LvPlaceEdit::pickRequested);
    place.findChild<QPushButton*>(QStringLiteral("pick"))->click();
    QCOMPARE(spy.size(), 1);
}

void tst_LvPlaceEdit::accessibility()
{
    const Place place;
    for (const QWidget* widget :
         {static_cast<const QWidget*>(place.text), static_cast<const QWidget*>(place.samples),
          static_cast<const QWidget*>(place.latitude), static_cast<const QWidget*>(place.longitude)}) {
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
    QVERIFY(place.text->accessibleName().contains(QStringLiteral("Von")));
}

LV_TEST_MAIN(tst_LvPlaceEdit)
#include "tst_LvPlaceEdit.moc"
