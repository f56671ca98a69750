#include "LvGPXTrackShape.h"
#include "LvTest.h"

#include <QDomDocument>
#include <QTranslator>

namespace
{

// Answers each text of the context with the text in brackets, so that a missing translation call shows.
class Brackets : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int count) const override
    {
        const bool asExpected =
            qstrcmp(context, "LvGPXTrackShape") == 0 && disambiguation == nullptr && count == -1;
        return asExpected ? QStringLiteral("[%1]").arg(QString::fromUtf8(source)) : QString();
    }
};

QList<int> numbers(const auto& wrappers)
{
    QList<int> result;
    for (const auto& wrapper : wrappers) {
        result.append(static_cast<int>(wrapper.value()));
    }
    return result;
}

} // namespace

class tst_LvGPXTrackShape : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void values();
    void keys_data();
    void keys();
    void labels_data();
    void labels();
    void labelOfArrow_data();
    void labelOfArrow();
    void translation();
    void choices_data();
    void choices();
    void decodeKml_data();
    void decodeKml();
    void fromXml_data();
    void fromXml();
    void toXml();
};

void tst_LvGPXTrackShape::construction()
{
    QVERIFY(LvGPXTrackShape() == LvGPXTrackShapeEnum::unknown);
    QVERIFY(LvGPXTrackShape(4) == LvGPXTrackShapeEnum::linestring);
    QVERIFY(LvGPXTrackShape(0x80000000U) == static_cast<LvGPXTrackShapeEnum>(0x80000000U));
    QVERIFY(LvGPXTrackShape(LvGPXTrackShapeEnum::automatic) == LvGPXTrackShape(256));
    QVERIFY(LvGPXTrackShape("point, Hop") == LvGPXTrackShape(3));
    QVERIFY(LvGPXTrackShape("nonsense") == LvGPXTrackShape(0));
    LvGPXTrackShape shape(1);
    shape = LvGPXTrackShapeEnum::polygon;
    QVERIFY(shape == LvGPXTrackShape(8));
}

void tst_LvGPXTrackShape::values()
{
    static_assert(std::is_same_v<std::underlying_type_t<LvGPXTrackShapeEnum>, quint32>);
    QCOMPARE(static_cast<int>(LvGPXTrackShapeEnum::unknown), 0);
    QCOMPARE(static_cast<int>(LvGPXTrackShapeEnum::point), 1);
    QCOMPARE(static_cast<int>(LvGPXTrackShapeEnum::hop), 2);
    QCOMPARE(static_cast<int>(LvGPXTrackShapeEnum::linestring), 4);
    QCOMPARE(static_cast<int>(LvGPXTrackShapeEnum::polygon), 8);
    QCOMPARE(static_cast<int>(LvGPXTrackShapeEnum::automatic), 256);
}

void tst_LvGPXTrackShape::keys_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("key");
    QTest::newRow("point") << 1 << "point";
    QTest::newRow("hop") << 2 << "hop";
    QTest::newRow("linestring") << 4 << "linestring";
    QTest::newRow("polygon") << 8 << "polygon";
    QTest::newRow("auto") << 256 << "auto";
    QTest::newRow("unknown") << 0 << "unknown";
}

void tst_LvGPXTrackShape::keys()
{
    QFETCH(int, value);
    QFETCH(QString, key);
    const LvGPXTrackShape shape(value);
    const auto* table = shape.enumToStringTable();
    QVERIFY(table->decode(key) == shape.value());
    QCOMPARE(table->toString(shape.value()), key);
    QCOMPARE(table->encodeCSV(shape.value()), value == 0 ? QString() : key);
    QVERIFY(LvGPXTrackShape(key.toUpper()) == shape);
}

void tst_LvGPXTrackShape::labels_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("point") << 1 << "Punkt"
                           << "Ein Punkt kann als verschiedene vorgefertigte Formen gezeichnet werden.";
    QTest::newRow("linestring") << 4 << "Strecke"
                                << "Alle Punkte werden zu einer Strecke verbunden.";
    QTest::newRow("polygon") << 8 << "Fläche"
                             << "Alle Punkte werden als Außenlinie einer Fläche betrachtet.";
    QTest::newRow("hop") << 2 << "Fluglinie"
                         << "Die beiden Punkt werden als Fluglinie betrachtet.";
    QTest::newRow("auto") << 256 << "Automatisch erkannt"
                          << "Die Form wird automatisch erkannt.";
    QTest::newRow("unknown") << 0 << "unbekannt"
                             << "Wir wissen die Form nicht.";
    QTest::newRow("combination") << 3 << ""
                                 << "";
    QTest::newRow("no flag of ours") << 16 << ""
                                     << "";
}

void tst_LvGPXTrackShape::labels()
{
    QFETCH(int, value);
    QFETCH(QString, label);
    QFETCH(QString, toolTip);
    QCOMPARE(LvGPXTrackShape(value).humanReadable(LvGPXMarkerShape()), label);
    QCOMPARE(LvGPXTrackShape(value).toolTip(), toolTip);
}

void tst_LvGPXTrackShape::labelOfArrow_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("marker");
    QTest::addColumn<QString>("label");
    QTest::newRow("line with arrow") << 4 << 1024 << "Pfeil";
    QTest::newRow("line with arrow and disk") << 4 << 1025 << "Pfeil";
    QTest::newRow("line with another marker") << 4 << 1023 << "Strecke";
    QTest::newRow("polygon with arrow") << 8 << 1024 << "Fläche";
    QTest::newRow("point with arrow") << 1 << 1024 << "Punkt";
}

void tst_LvGPXTrackShape::labelOfArrow()
{
    QFETCH(int, value);
    QFETCH(int, marker);
    QFETCH(QString, label);
    QCOMPARE(LvGPXTrackShape(value).humanReadable(LvGPXMarkerShape(marker)), label);
}

void tst_LvGPXTrackShape::translation()
{
    Brackets translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    for (const int value : {0, 1, 2, 4, 8, 256}) {
        const LvGPXTrackShape shape(value);
        QVERIFY2(shape.humanReadable(LvGPXMarkerShape()).startsWith('['), qPrintable(QString::number(value)));
        QVERIFY2(shape.toolTip().startsWith('['), qPrintable(QString::number(value)));
    }
    QCOMPARE(LvGPXTrackShape(4).humanReadable(LvGPXMarkerShape(1024)), QStringLiteral("[Pfeil]"));
    QVERIFY(LvGPXTrackShape(3).toolTip().isEmpty());
    QCoreApplication::removeTranslator(&translator);
}

void tst_LvGPXTrackShape::choices_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QList<int>>("shapes");
    QTest::addColumn<QList<int>>("markers");
    QTest::addColumn<int>("available");
    const QList<int> pointMarkers{1, 2, 128, 256, 512, 8, 16, 32, 64};
    QTest::newRow("point") << 1 << QList<int>{1} << pointMarkers << 7;
    QTest::newRow("hop") << 2 << QList<int>{2} << QList<int>{0} << 5;
    QTest::newRow("linestring") << 4 << QList<int>{8, 4} << QList<int>{0, 1024} << 1;
    QTest::newRow("polygon") << 8 << QList<int>{1, 8} << QList<int>{0} << 3;
    QTest::newRow("auto") << 256 << QList<int>{} << QList<int>{0} << 0;
    QTest::newRow("unknown") << 0 << QList<int>{} << QList<int>{0} << 0;
    QTest::newRow("combination") << 5 << QList<int>{} << QList<int>{0} << 0;
}

void tst_LvGPXTrackShape::choices()
{
    QFETCH(int, value);
    QFETCH(QList<int>, shapes);
    QFETCH(QList<int>, markers);
    QFETCH(int, available);
    const LvGPXTrackShape shape(value);
    QCOMPARE(numbers(shape.possibleShapes()), shapes);
    QCOMPARE(numbers(shape.createMarkerShapes()), markers);
    QVERIFY(shape.availableDisplayOptions() == LvGPXTrackDisplayOptions(available));
    QVERIFY(shape.defaultDisplayOptions() == LvGPXTrackDisplayOptionsEnum::stroke);
}

void tst_LvGPXTrackShape::decodeKml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("value");
    QTest::newRow("polygon") << "<p><Polygon/></p>" << 8;
    QTest::newRow("line") << "<p><LineString/></p>" << 4;
    QTest::newRow("point") << "<p><Point/></p>" << 1;
    QTest::newRow("polygon behind point") << "<p><Point/><Polygon/></p>" << 8;
    QTest::newRow("line behind point") << "<p><Point/><LineString/></p>" << 4;
    QTest::newRow("polygon behind line") << "<p><LineString/><Polygon/></p>" << 8;
    QTest::newRow("shape") << "<p><shape>hop</shape></p>" << 2;
    QTest::newRow("shape of two keys") << "<p><shape>hop,point</shape></p>" << 3;
    QTest::newRow("empty shape") << "<p><shape/></p>" << 0;
    QTest::newRow("point before shape") << "<p><shape>hop</shape><Point/></p>" << 1;
    QTest::newRow("nothing") << "<p/>" << 256;
    QTest::newRow("not a direct child") << "<p><MultiGeometry><Point/></MultiGeometry></p>" << 256;
    QTest::newRow("other case") << "<p><point/></p>" << 256;
}

void tst_LvGPXTrackShape::decodeKml()
{
    QFETCH(QString, xml);
    QFETCH(int, value);
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    QVERIFY(LvGPXTrackShape::decodeKml(document.documentElement()) == LvGPXTrackShape(value));
}

void tst_LvGPXTrackShape::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("value");
    QTest::newRow("missing") << "<c/>" << 256;
    QTest::newRow("empty") << "<c><trackShape/></c>" << 0;
    QTest::newRow("polygon") << "<c><trackShape> POLYGON </trackShape></c>" << 8;
    QTest::newRow("two") << "<c><trackShape>point, hop</trackShape></c>" << 3;
    QTest::newRow("unknown") << "<c><trackShape>unknown</trackShape></c>" << 0;
}

void tst_LvGPXTrackShape::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(int, value);
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    QVERIFY(LvGPXTrackShape::fromXml(document.documentElement()) == LvGPXTrackShape(value));
}

void tst_LvGPXTrackShape::toXml()
{
    QDomDocument document;
    QDomElement parent = document.createElement("c");
    LvGPXTrackShape(256).toXml(parent);
    QCOMPARE(parent.childNodes().size(), 1);
    QCOMPARE(parent.firstChildElement("trackShape").text(), QStringLiteral("auto"));
    QDomElement other = document.createElement("c");
    LvGPXTrackShape(0).toXml(other);
    QVERIFY(!other.firstChildElement("trackShape").isNull());
    QCOMPARE(other.firstChildElement("trackShape").text(), QString());
}

LV_TEST_MAIN(tst_LvGPXTrackShape)
#include "tst_LvGPXTrackShape.moc"
