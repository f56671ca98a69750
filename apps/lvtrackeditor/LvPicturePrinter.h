#pragma once

#include <QCoreApplication>
#include <QString>

class LvPictureExporter;
class QPrinter;
class QWidget;

/// Prints what the map shows, one page, filled as far as the printer can print.
class LvPicturePrinter
{
    Q_DECLARE_TR_FUNCTIONS(LvPicturePrinter)

public:
    LvPicturePrinter() = delete;

    /// Asks for a printer and prints. Returns why that failed, a sentence for the user; an empty text on
    /// success and when the user cancels.
    [[nodiscard]] static QString print(const LvPictureExporter& exporter, const QString& title,
                                       QWidget* parent);

    /// Shows the page as it would be printed; from there the user may print it.
    [[nodiscard]] static QString preview(const LvPictureExporter& exporter, const QString& title,
                                         QWidget* parent);

    /// Sets up a printer: the page lies where the map is wider than high.
    static void prepare(QPrinter& printer, const LvPictureExporter& exporter, const QString& title);

    /// Prints the page. Returns why that failed, a sentence for the user; an empty text on success.
    [[nodiscard]] static QString paintPage(const LvPictureExporter& exporter, QPrinter& printer);
};
