#include "LvPicturePrinter.h"

#include "LvPictureExporter.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include <algorithm>

namespace
{

// More dots are not seen in a map, but a fading map needs an image of them all.
constexpr int highestResolution = 300;
constexpr double screenResolution = 96.0; // where the paint factor is 1

} // namespace

QString LvPicturePrinter::print(const LvPictureExporter& exporter, const QString& title, QWidget* parent)
{
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, exporter, title);
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(tr("Karte drucken"));
    return dialog.exec() == QDialog::Accepted ? paintPage(exporter, printer) : QString();
}

QString LvPicturePrinter::preview(const LvPictureExporter& exporter, const QString& title, QWidget* parent)
{
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, exporter, title);
    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setWindowTitle(tr("Druckvorschau"));
    QString errorText;
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* page) { errorText = paintPage(exporter, *page); });
    dialog.exec();
    return errorText;
}

void LvPicturePrinter::prepare(QPrinter& printer, const LvPictureExporter& exporter, const QString& title)
{
    const QSize size = exporter.shownSize();
    printer.setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setDocName(title);
    printer.setCreator(QCoreApplication::applicationName());
}

QString LvPicturePrinter::paintPage(const LvPictureExporter& exporter, QPrinter& printer)
{
    printer.setResolution(std::min(printer.resolution(), highestResolution));
    QPainter painter;
    if (!painter.begin(&printer)) {
        return tr("Der Drucker „%1“ nimmt nichts an.").arg(printer.printerName());
    }
    LvPictureOptions options;
    options.size = printer.pageLayout().paintRectPixels(printer.resolution()).size();
    options.paintFactor = printer.resolution() / screenResolution;
    painter.setClipRect(QRect(QPoint(0, 0), options.size));
    QString errorText = exporter.draw(painter, options);
    if (!errorText.isEmpty()) {
        printer.abort();
    }
    return painter.end() || !errorText.isEmpty() ? errorText : tr("Das Drucken ist fehlgeschlagen.");
}
