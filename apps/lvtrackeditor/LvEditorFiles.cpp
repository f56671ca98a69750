#include "LvEditorFiles.h"

#include "LvEditorSettings.h"
#include "LvExportPictureDialog.h"
#include "LvMapWidget.h"
#include "LvPictureExporter.h"
#include "LvPicturePrinter.h"
#include "LvRecentFiles.h"
#include "LvTrackDocument.h"
#include "LvTrackDocumentFile.h"
#include "LvTrackExporter.h"
#include "LvTrackSelectionFactory.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

LvEditorFiles::LvEditorFiles(LvTrackDocument* document, LvMapWidget* map, LvRecentFiles* recentFiles,
                             QWidget* window)
    : QObject(window)
    , myDocument(document)
    , myMap(map)
    , myRecentFiles(recentFiles)
    , myWindow(window)
{
}

LvEditorFiles::~LvEditorFiles() = default;

QStringList LvEditorFiles::askForFiles()
{
    const QString tracks = LvTrackSelectionFactory::instance()->supportedFileFormats().join(QLatin1Char(' '));
    const QString document = QStringLiteral("*.%1").arg(LvTrackDocumentFile::suffix());
    const QStringList filters = {tr("Spuren und Dokumente (%1 %2)").arg(tracks, document),
                                 tr("Spuren (%1)").arg(tracks), LvTrackDocumentFile::nameFilter(),
                                 tr("Alle Dateien (*)")};
    LvEditorSettings* settings = LvEditorSettings::instance();
    const QStringList names = QFileDialog::getOpenFileNames(
        myWindow, tr("Dateien öffnen"), settings->lastDirectory(), filters.join(QStringLiteral(";;")));
    if (!names.isEmpty()) {
        settings->setLastDirectory(QFileInfo(names.first()).absolutePath());
    }
    return names;
}

bool LvEditorFiles::confirmLosingChanges()
{
    if (!myDocument->isModified()) {
        return true;
    }
    const QMessageBox::StandardButton answer = QMessageBox::warning(
        myWindow, tr("Ungesicherte Änderungen"), tr("Das Dokument ist geändert. Soll es gespeichert werden?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save) {
        return save();
    }
    return answer == QMessageBox::Discard;
}

bool LvEditorFiles::open(const QString& fileName)
{
    QStringList warnings;
    if (!report(LvTrackDocumentFile::open(*myDocument, fileName, &warnings))) {
        return false;
    }
    myRecentFiles->add(fileName);
    if (!warnings.isEmpty()) {
        Q_EMIT messages(warnings);
    }
    return true;
}

void LvEditorFiles::startNew()
{
    myDocument->reset();
}

bool LvEditorFiles::save()
{
    return myDocument->fileName().isEmpty() ? saveAs() : saveTo(myDocument->fileName());
}

bool LvEditorFiles::saveAs()
{
    const QString fileName = askSaveName(tr("Dokument speichern"), LvTrackDocumentFile::nameFilter(),
                                         LvTrackDocumentFile::suffix());
    return !fileName.isEmpty() && saveTo(fileName);
}

bool LvEditorFiles::saveTo(const QString& fileName)
{
    if (!report(
            LvTrackDocumentFile::save(*myDocument, fileName, LvEditorSettings::instance()->trackStorage()))) {
        return false;
    }
    myRecentFiles->add(fileName);
    return true;
}

void LvEditorFiles::exportGpx()
{
    exportTracks(tr("Spuren als GPX exportieren"), tr("GPX-Dateien (*.gpx)"), QStringLiteral("gpx"));
}

void LvEditorFiles::exportGeoJson()
{
    exportTracks(tr("Spuren als GeoJSON exportieren"), tr("GeoJSON-Dateien (*.geojson)"),
                 QStringLiteral("geojson"));
}

void LvEditorFiles::exportTracks(const QString& title, const QString& filter, const QString& suffix)
{
    const QString fileName = askSaveName(title, filter, suffix);
    if (!fileName.isEmpty()) {
        report(LvTrackExporter::save(myDocument->visibleSelection().tracks(), fileName));
    }
}

void LvEditorFiles::exportPicture()
{
    LvExportPictureDialog dialog(pictureExporter(), myWindow);
    const QDir folder(LvEditorSettings::instance()->lastDirectory());
    dialog.setFileName(folder.filePath(QStringLiteral("%1.png").arg(title())));
    if (dialog.exec() == QDialog::Accepted) {
        LvEditorSettings::instance()->setLastDirectory(QFileInfo(dialog.fileName()).absolutePath());
    }
}

void LvEditorFiles::print()
{
    report(LvPicturePrinter::print(pictureExporter(), title(), myWindow));
}

void LvEditorFiles::previewPrint()
{
    report(LvPicturePrinter::preview(pictureExporter(), title(), myWindow));
}

LvPictureExporter LvEditorFiles::pictureExporter() const
{
    return {myDocument->visibleSelection(), myMap->view(), myMap->mapSource(),
            LvEditorSettings::instance()->attribution()};
}

QString LvEditorFiles::title() const
{
    return myDocument->fileName().isEmpty() ? tr("Karte")
                                            : QFileInfo(myDocument->fileName()).completeBaseName();
}

QString LvEditorFiles::askSaveName(const QString& title, const QString& filter, const QString& suffix)
{
    LvEditorSettings* settings = LvEditorSettings::instance();
    QFileDialog dialog(myWindow, title, settings->lastDirectory(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix); // the dialogue asks before it takes the name of an existing file
    if (!myDocument->fileName().isEmpty()) {
        dialog.selectFile(QStringLiteral("%1.%2").arg(this->title(), suffix));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    const QString fileName = dialog.selectedFiles().constFirst();
    settings->setLastDirectory(QFileInfo(fileName).absolutePath());
    return fileName;
}

bool LvEditorFiles::report(const QString& errorText)
{
    if (errorText.isEmpty()) {
        return true;
    }
    QMessageBox::critical(myWindow, tr("Das ging nicht"), errorText);
    return false;
}
