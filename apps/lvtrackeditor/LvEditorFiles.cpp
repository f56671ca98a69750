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
#include <QtConcurrent>

#include <utility>

LvEditorFiles::LvEditorFiles(LvTrackDocument* document, LvMapWidget* map, LvRecentFiles* recentFiles,
                             QWidget* window)
    : QObject(window)
    , myDocument(document)
    , myMap(map)
    , myRecentFiles(recentFiles)
    , myWindow(window)
{
    connect(&myWatcher, &QFutureWatcherBase::finished, this, &LvEditorFiles::finish);
}

LvEditorFiles::~LvEditorFiles()
{
    myPool.waitForDone();
}

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

bool LvEditorFiles::confirmLosingChanges(const std::function<void()>& whenWritten)
{
    if (myActivity == Activity::Writing) {
        myWhenWritten = whenWritten;
        return false;
    }
    if (!myDocument->isModified()) {
        return true;
    }
    const QMessageBox::StandardButton answer = QMessageBox::warning(
        myWindow, tr("Ungesicherte Änderungen"), tr("Das Dokument ist geändert. Soll es gespeichert werden?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save) {
        cancelOpening();
        if (save()) {
            myWhenWritten = whenWritten;
        }
        return false;
    }
    return answer == QMessageBox::Discard;
}

bool LvEditorFiles::open(const QString& fileName)
{
    if (myActivity == Activity::Writing) {
        return false;
    }
    cancelOpening();
    start(Activity::Reading, tr("Das Dokument „%1“ wird geöffnet…").arg(QFileInfo(fileName).fileName()),
          [this, fileName, before = myDocument->content()]() -> Finish {
              const LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
              return [this, fileName, before, reading] { return finishOpening(fileName, before, reading); };
          });
    return true;
}

bool LvEditorFiles::finishOpening(const QString& fileName, const LvTrackDocumentContent& before,
                                  const LvTrackDocumentReading& reading)
{
    if (!report(reading.errorText)) {
        Q_EMIT openingFinished(false);
        return false;
    }
    if (myDocument->content() == before) {
        adopt(fileName, reading);
        return true;
    }
    // The user went on working.
    const bool isAllowed = confirmLosingChanges(
        [this, fileName, reading] { finishOpening(fileName, myDocument->content(), reading); });
    if (isAllowed) {
        adopt(fileName, reading);
    } else if (!isBusy()) {
        Q_EMIT openingFinished(false);
    }
    return isAllowed;
}

void LvEditorFiles::adopt(const QString& fileName, const LvTrackDocumentReading& reading)
{
    myDocument->reset(reading.content, fileName);
    myRecentFiles->add(fileName);
    if (!reading.warnings.isEmpty()) {
        Q_EMIT messages(reading.warnings);
    }
    Q_EMIT openingFinished(true);
}

void LvEditorFiles::cancelOpening()
{
    if (myActivity != Activity::Reading) {
        return;
    }
    // The worker reads to the end, but nobody hears of it.
    myTask = {};
    myActivity = Activity::None;
    myWentWell = false;
    Q_EMIT activityChanged(QString());
    Q_EMIT openingFinished(false);
}

void LvEditorFiles::startNew()
{
    cancelOpening();
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
    if (isBusy()) {
        return false;
    }
    start(Activity::Writing, tr("Das Dokument „%1“ wird gespeichert…").arg(QFileInfo(fileName).fileName()),
          [this, fileName, content = myDocument->content(),
           storage = LvEditorSettings::instance()->trackStorage()]() -> Finish {
              const QString errorText = LvTrackDocumentFile::write(content, fileName, storage);
              return [this, fileName, content, errorText] {
                  if (errorText.isEmpty()) {
                      myDocument->markSaved(fileName, content);
                      myRecentFiles->add(fileName);
                  }
                  return finishWriting(fileName, errorText);
              };
          });
    return true;
}

bool LvEditorFiles::finishWriting(const QString& fileName, const QString& errorText)
{
    const std::function<void()> whenWritten = std::exchange(myWhenWritten, {});
    if (!report(errorText)) {
        return false;
    }
    Q_EMIT written(fileName);
    if (whenWritten) {
        whenWritten();
    }
    return true;
}

void LvEditorFiles::start(Activity activity, const QString& text, const std::function<Finish()>& work)
{
    myActivity = activity;
    myTask = QtConcurrent::run(&myPool, work);
    myWatcher.setFuture(myTask);
    Q_EMIT activityChanged(text);
}

void LvEditorFiles::finish()
{
    if (!isBusy() || !myTask.isFinished()) {
        return; // given up, or waited for
    }
    const Finish finishTask = std::exchange(myTask, {}).takeResult();
    myActivity = Activity::None;
    Q_EMIT activityChanged(QString());
    myWentWell = finishTask();
}

bool LvEditorFiles::waitForDone()
{
    while (isBusy()) {
        myTask.waitForFinished();
        finish();
    }
    return myWentWell;
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
    if (fileName.isEmpty() || isBusy()) {
        return;
    }
    start(Activity::Writing, tr("Die Spuren werden exportiert…"),
          [this, fileName, tracks = myDocument->visibleSelection().tracks()]() -> Finish {
              const QString errorText = LvTrackExporter::save(tracks, fileName);
              return [this, fileName, errorText] { return finishWriting(fileName, errorText); };
          });
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
