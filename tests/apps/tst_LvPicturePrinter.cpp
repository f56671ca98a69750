#include "LvPictureExporter.h"
#include "LvPicturePrinter.h"
#include "LvTest.h"
#include "LvTestTracks.h"

#include <QDialog>
#include <QFile>
#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>

using namespace LvTestTracks;

namespace
{

LvPictureExporter exporterFor(const QSize& shownSize, const QString& mapSource = QStringLiteral("builtin"))
{
    return {LvGPXTrackSelection(list({"A"})), LvMapView::aroundCenter(LvGeoPosition(51, 9), 5, shownSize),
            mapSource, QString()};
}

QByteArray bytesOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_LvPicturePrinter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void orientation_data();
    void orientation();
    void page_data();
    void page();
    void failures();
    void dialogues();

private:
    QTemporaryDir myDirectory;
};

void tst_LvPicturePrinter::orientation_data()
{
    QTest::addColumn<QSize>("shownSize");
    QTest::addColumn<QPageLayout::Orientation>("expected");
    QTest::newRow("wide map") << QSize(800, 600) << QPageLayout::Landscape;
    QTest::newRow("high map") << QSize(600, 800) << QPageLayout::Portrait;
    QTest::newRow("square map") << QSize(600, 600) << QPageLayout::Portrait;
}

void tst_LvPicturePrinter::orientation()
{
    QFETCH(QSize, shownSize);
    QFETCH(QPageLayout::Orientation, expected);
    QPrinter printer(QPrinter::HighResolution);
    LvPicturePrinter::prepare(printer, exporterFor(shownSize), QStringLiteral("Weser"));
    QCOMPARE(printer.pageLayout().orientation(), expected);
    QCOMPARE(printer.docName(), QStringLiteral("Weser"));
}

void tst_LvPicturePrinter::page_data()
{
    QTest::addColumn<QSize>("shownSize");
    QTest::addColumn<QByteArray>("box");
    QTest::newRow("landscape") << QSize(800, 600) << QByteArray("/MediaBox [0 0 842 595]");
    QTest::newRow("portrait") << QSize(600, 800) << QByteArray("/MediaBox [0 0 595 842]");
}

void tst_LvPicturePrinter::page()
{
    QFETCH(QSize, shownSize);
    QFETCH(QByteArray, box);
    const QString fileName = myDirectory.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    printer.setPageSize(QPageSize(QPageSize::A4));
    const LvPictureExporter exporter = exporterFor(shownSize);
    LvPicturePrinter::prepare(printer, exporter, QStringLiteral("Weser"));
    QVERIFY(printer.resolution() > 300);
    QCOMPARE(LvPicturePrinter::paintPage(exporter, printer), QString());
    QCOMPARE(printer.resolution(), 300);
    const QByteArray bytes = bytesOf(fileName);
    QVERIFY(bytes.startsWith("%PDF"));
    QVERIFY2(QByteArray(bytes).replace(".000000", "").contains(box),
             bytes.mid(bytes.indexOf("/MediaBox"), 60));
    QCOMPARE(bytes.count("/Type /Page\n"), 1);
}

void tst_LvPicturePrinter::failures()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(myDirectory.filePath("no/such/folder.pdf"));
    QVERIFY(LvPicturePrinter::paintPage(exporterFor(QSize(80, 60)), printer)
                .startsWith(QLatin1String("Der Drucker")));
    printer.setOutputFileName(myDirectory.filePath("a.pdf"));
    const QString errorText =
        LvPicturePrinter::paintPage(exporterFor(QSize(80, 60), "/no/such/map.mbtiles"), printer);
    QVERIFY2(errorText.startsWith(QLatin1String("Die Karte")), qPrintable(errorText));
}

void tst_LvPicturePrinter::dialogues()
{
    const LvPictureExporter exporter = exporterFor(QSize(800, 600));
    QStringList titles;
    const auto closeNext = [&titles] {
        QTimer::singleShot(500, qApp, [&titles] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            titles.append(dialog->windowTitle());
            dialog->reject();
        });
    };
    closeNext();
    QCOMPARE(LvPicturePrinter::preview(exporter, QStringLiteral("Weser"), nullptr), QString());
    closeNext();
    QCOMPARE(LvPicturePrinter::print(exporter, QStringLiteral("Weser"), nullptr), QString());
    QCOMPARE(titles, (QStringList{"Druckvorschau", "Karte drucken"}));
}

LV_TEST_MAIN(tst_LvPicturePrinter)
#include "tst_LvPicturePrinter.moc"
