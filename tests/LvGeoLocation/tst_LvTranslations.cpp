#include "LvGPXBeelineCreator.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackListModel.h"
#include "LvGPXTrackMultiFunctionDelegateWidget.h"
#include "LvGPXTrackShape.h"
#include "LvGeoArcEdit.h"
#include "LvLatitude.h"
#include "LvLongitude.h"
#include "LvPreferencesGeoLocation.h"
#include "LvRequestDiskAccess.h"
#include "LvTest.h"
#include "LvTranslations.h"

#include <QComboBox>
#include <QDomDocument>
#include <QFile>
#include <QRegularExpression>
#include <QStandardItemModel>
#include <QToolButton>
#include <QTranslator>

namespace
{

const QString ownCatalogue = QStringLiteral("tst_LvTranslations");

// What install() said before there was an application object.
QLocale::Language languageWithoutApplication = QLocale::AnyLanguage;

QString line()
{
    return LvGPXTrackShape(LvGPXTrackShapeEnum::linestring).humanReadable(LvGPXMarkerShape());
}

QString ownText()
{
    return QCoreApplication::translate("tst_LvTranslations", "Eigener Text");
}

qsizetype countTranslators()
{
    return qApp->findChildren<QTranslator*>().size();
}

QStringList placeholders(const QString& text)
{
    QStringList found;
    QRegularExpressionMatchIterator matches = QRegularExpression(QStringLiteral("%[0-9n]")).globalMatch(text);
    while (matches.hasNext()) {
        found.append(matches.next().captured());
    }
    found.sort();
    return found;
}

} // namespace

class tst_LvTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void withoutApplication();
    void languages_data();
    void languages();
    void defaultLocale();
    void again();
    void labels_data();
    void labels();
    void widgets();
    void livingWidgets();
    void ownCatalogues();
    void unknownCatalogue();
    void wholeCatalogue();
};

void tst_LvTranslations::init()
{
    LvTranslations::install(QLocale(QLocale::German));
}

void tst_LvTranslations::cleanup()
{
    QLocale::setDefault(QLocale::c());
    LvTranslations::install(QLocale(QLocale::German), ownCatalogue);
}

void tst_LvTranslations::withoutApplication()
{
    QCOMPARE(languageWithoutApplication, QLocale::German);
}

void tst_LvTranslations::languages_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QLocale::Language>("language");
    QTest::addColumn<QString>("text");
    QTest::newRow("German") << QLocale(QLocale::German) << QLocale::German << "Strecke";
    QTest::newRow("Austria") << QLocale(QStringLiteral("de_AT")) << QLocale::German << "Strecke";
    QTest::newRow("German in Belgium") << QLocale(QStringLiteral("de_BE")) << QLocale::German << "Strecke";
    QTest::newRow("English") << QLocale(QLocale::English) << QLocale::English << "Line";
    QTest::newRow("United Kingdom") << QLocale(QStringLiteral("en_GB")) << QLocale::English << "Line";
    QTest::newRow("no catalogue: English") << QLocale(QLocale::Japanese) << QLocale::English << "Line";
    QTest::newRow("a language that begins like the German code: English")
        << QLocale(QLocale::Zarma) << QLocale::English << "Line"; // "dje"
    QTest::newRow("C: English") << QLocale::c() << QLocale::English << "Line";
}

void tst_LvTranslations::languages()
{
    QFETCH(QLocale, locale);
    QFETCH(QLocale::Language, language);
    QFETCH(QString, text);
    QCOMPARE(LvTranslations::install(locale), language);
    QCOMPARE(line(), text);
}

void tst_LvTranslations::defaultLocale()
{
    QLocale::setDefault(QLocale(QLocale::English));
    QCOMPARE(LvTranslations::install(), QLocale::English);
    QCOMPARE(line(), QStringLiteral("Line"));
    QLocale::setDefault(QLocale(QLocale::German));
    QCOMPARE(LvTranslations::install(), QLocale::German);
    QCOMPARE(line(), QStringLiteral("Strecke"));
}

void tst_LvTranslations::again()
{
    QCOMPARE(countTranslators(), qsizetype{0});
    for (int i = 0; i < 3; ++i) {
        LvTranslations::install(QLocale(QLocale::English));
        QCOMPARE(line(), QStringLiteral("Line"));
        QCOMPARE(countTranslators(), qsizetype{1}); // in the place of the one before
    }
    LvTranslations::install(QLocale(QLocale::German));
    QCOMPARE(line(), QStringLiteral("Strecke"));
    QCOMPARE(countTranslators(), qsizetype{0});
}

void tst_LvTranslations::labels_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("German") << QLocale(QLocale::German)
                            << QStringList{"Strecke", "Pfeil",           "Punkt",         "Fluglinie",
                                           "Name",    "53° 8′ 24″ Süd",  "8° 30′ 0″ Ost", "S",
                                           "W",       "Alle Dateien (*)"};
    QTest::newRow("English") << QLocale(QLocale::English)
                             << QStringList{"Line",           "Arrow", "Point",
                                            "Flight line",    "Name",  "53° 8′ 24″ South",
                                            "8° 30′ 0″ East", "S",     "W",
                                            "All files (*)"};
}

void tst_LvTranslations::labels()
{
    QFETCH(QLocale, locale);
    QFETCH(QStringList, expected);
    LvTranslations::install(locale);
    LvLatitude south;
    south.setDegree(-53, -8, -24.0);
    const LvGPXBeelineCreator beeline(LvGeoPosition(50, 8), LvGeoPosition(51, 9));
    const LvGPXTrackListModel model(nullptr);
    QCOMPARE(
        (QStringList{
            line(), LvGPXTrackShape(LvGPXTrackShapeEnum::linestring).humanReadable(LvGPXMarkerShape(1024)),
            LvGPXTrackShape(LvGPXTrackShapeEnum::point).humanReadable(LvGPXMarkerShape(1)),
            beeline.createBeeline(QString()).description(), model.headerData(0, Qt::Horizontal).toString(),
            south.toString(true), LvLongitude(8.5).toString(true), south.directionIndicator(),
            LvLongitude(-8.5).directionIndicator(), LvRequestDiskAccess::nameFilters(QString())}),
        expected);
}

void tst_LvTranslations::widgets()
{
    LvTranslations::install(QLocale(QLocale::English));
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("Harz")));
    const LvGPXTrackMultiFunctionDelegateWidget row(model.index(0, 0), LvGPXTrackEditOptions(15), nullptr);
    const auto button = [&](const char* name) { return row.findChild<QToolButton*>(QLatin1String(name)); };
    QCOMPARE(button("editButton")->toolTip(), QStringLiteral("Edit Harz"));
    QCOMPARE(button("deleteButton")->toolTip(), QStringLiteral("Delete Harz"));
    QCOMPARE(button("zoomToButton")->toolTip(), QStringLiteral("<b>Zoom to</b> Harz"));
    QCOMPARE(button("addButton")->toolTip(), QStringLiteral("<b>Mark</b> Harz"));
    QCOMPARE(button("zoomToButton")->accessibleName(), QStringLiteral("Zoom to Harz"));
    QCOMPARE(button("addButton")->accessibleName(), QStringLiteral("Mark Harz"));

    const LvGeoArcEdit latitude(nullptr, true);
    const LvGeoArcEdit longitude(nullptr, false);
    QCOMPARE(latitude.findChild<QComboBox*>()->itemText(0), QStringLiteral("North"));
    QCOMPARE(latitude.findChild<QComboBox*>()->itemText(1), QStringLiteral("South"));
    QCOMPARE(longitude.findChild<QComboBox*>()->itemText(0), QStringLiteral("East"));
    QCOMPARE(longitude.findChild<QComboBox*>()->itemText(1), QStringLiteral("West"));
    QCOMPARE(latitude.accessibleName(), QStringLiteral("Latitude"));
    QCOMPARE(longitude.findChild<QComboBox*>()->accessibleName(), QStringLiteral("Longitude: hemisphere"));

    const LvPreferencesGeoLocation page(nullptr);
    QCOMPARE(page.title(), QStringLiteral("Maps"));
}

void tst_LvTranslations::livingWidgets()
{
    const LvGeoArcEdit edit(nullptr, true);
    const auto* box = edit.findChild<QComboBox*>();
    QCOMPARE(box->itemText(1), QStringLiteral("Süd"));
    LvTranslations::install(QLocale(QLocale::English));
    QTRY_COMPARE(box->itemText(1), QStringLiteral("South"));
    LvTranslations::install(QLocale(QLocale::German));
    QTRY_COMPARE(box->itemText(1), QStringLiteral("Süd"));
}

void tst_LvTranslations::ownCatalogues()
{
    QCOMPARE(ownText(), QStringLiteral("Eigener Text"));
    QCOMPARE(LvTranslations::install(QLocale(QLocale::English), ownCatalogue), QLocale::English);
    QCOMPARE(ownText(), QStringLiteral("Text of its own"));
    QCOMPARE(line(), QStringLiteral("Strecke")); // each catalogue for itself
    QCOMPARE(LvTranslations::install(QLocale(QLocale::French)), QLocale::English);
    QCOMPARE(LvTranslations::install(QLocale(QLocale::French), ownCatalogue), QLocale::French);
    QCOMPARE(ownText(), QStringLiteral("Texte propre"));
    QCOMPARE(line(), QStringLiteral("Line"));
    QCOMPARE(countTranslators(), qsizetype{2});
    QCOMPARE(LvTranslations::install(QLocale(QLocale::German), ownCatalogue), QLocale::German);
    QCOMPARE(ownText(), QStringLiteral("Eigener Text"));
    QCOMPARE(line(), QStringLiteral("Line"));
}

void tst_LvTranslations::unknownCatalogue()
{
    LvTranslations::install(QLocale(QLocale::English));
    QCOMPARE(LvTranslations::install(QLocale(QLocale::English), QStringLiteral("nirgends")), QLocale::German);
    QCOMPARE(countTranslators(), qsizetype{1});
    QCOMPARE(line(), QStringLiteral("Line"));
}

void tst_LvTranslations::wholeCatalogue()
{
    // Every entry of the file is what the users see: compiled, found under its context and complete.
    QFile file(QStringLiteral(LV_CATALOGUE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QDomDocument document;
    QVERIFY(document.setContent(&file));
    LvTranslations::install(QLocale(QLocale::English));
    int count = 0;
    for (QDomElement context = document.documentElement().firstChildElement("context"); !context.isNull();
         context = context.nextSiblingElement("context")) {
        const QString name = context.firstChildElement("name").text();
        for (QDomElement message = context.firstChildElement("message"); !message.isNull();
             message = message.nextSiblingElement("message")) {
            const QString source = message.firstChildElement("source").text();
            const QDomElement comment = message.firstChildElement("comment");
            const QDomElement translation = message.firstChildElement("translation");
            const QByteArray key = (name + u'/' + source).toUtf8();
            QVERIFY2(!translation.hasAttribute("type"), key.constData());
            QVERIFY2(!translation.text().isEmpty(), key.constData());
            QVERIFY2(placeholders(translation.text()) == placeholders(source), key.constData());
            const QByteArray disambiguation = comment.text().toUtf8();
            QCOMPARE(QCoreApplication::translate(name.toUtf8().constData(), source.toUtf8().constData(),
                                                 comment.isNull() ? nullptr : disambiguation.constData()),
                     translation.text());
            ++count;
        }
    }
    QVERIFY(count > 40);
}

int main(int argc, char* argv[])
{
    languageWithoutApplication = LvTranslations::install(QLocale(QLocale::English));
    return LvTest::run<tst_LvTranslations>(argc, argv);
}

#include "tst_LvTranslations.moc"
