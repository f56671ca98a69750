// Selections of tracks with the files that they include. The root of the input is the element of the
// selection; each of its children "file" becomes a file in the folder of the document first. The attribute
// "name" is the name of the file, and the attribute "kind" may make it a "folder", a "pipe", a "link" to the
// file that its text names, a "loop" (a link to itself) or a "device". "{folder}" stands for the folder.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackSelection.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <sys/stat.h>

namespace
{

// Each track with a file of its own stays in the registry of the files for ever.
constexpr qsizetype mostFiles = 4;
constexpr int mostWrittenFiles = 8;

const QString includeTag = QStringLiteral("include");

/// A name for a file in the folder, however hostile the text is.
QString safeName(QString text)
{
    text.replace(QLatin1Char('/'), QLatin1Char('_'));
    text.replace(QChar(0), QLatin1Char('_'));
    return text == QLatin1String(".") || text == QLatin1String("..") ? QStringLiteral("_") : text;
}

/// Gives every track a description that no other has: the registry of the files, which keeps every track that
/// was ever read from a file, finds equal ones by comparing them all.
void makeUnique(QDomDocument& document, const QList<QDomElement>& elements)
{
    static qint64 myCounter = 0;
    for (QDomElement trk : elements) {
        if (!trk.isNull()) {
            QDomElement description = document.createElement(QStringLiteral("desc"));
            description.appendChild(document.createTextNode(QString::number(++myCounter)));
            trk.appendChild(description);
        }
    }
}

QByteArray contentOf(const QDomElement& file)
{
    const QDomElement root = file.firstChildElement();
    if (root.isNull()) {
        return file.text().toUtf8();
    }
    QDomDocument document;
    document.appendChild(document.importNode(root, true));
    return document.toByteArray(-1);
}

/// Names that the file system does not take leave the file out.
void writeFile(const QDomElement& element, const QDir& folder)
{
    const QString path = folder.filePath(safeName(element.attribute(QStringLiteral("name"))));
    const QString kind = element.attribute(QStringLiteral("kind"));
    if (kind == QLatin1String("folder")) {
        QDir().mkdir(path);
    } else if (kind == QLatin1String("pipe")) {
        ::mkfifo(QFile::encodeName(path).constData(), 0600);
    } else if (kind == QLatin1String("link")) {
        QFile::link(safeName(element.text()), path);
    } else if (kind == QLatin1String("loop")) {
        QFile::link(QFileInfo(path).fileName(), path);
    } else if (kind == QLatin1String("device")) {
        QFile::link(QStringLiteral("/dev/zero"), path);
    } else if (!QFileInfo(path).isSymLink() && !QFileInfo::exists(path)) {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(contentOf(element));
        }
    }
}

void writeFiles(const QDomElement& root, const QDir& folder)
{
    const QString tag = QStringLiteral("file");
    int count = 0;
    for (QDomElement file = root.firstChildElement(tag); !file.isNull() && count < mostWrittenFiles;
         file = file.nextSiblingElement(tag)) {
        writeFile(file, folder);
        ++count;
    }
}

/// The "trk" elements in the order in which a selection reads them; null ones for tracks without.
QList<QDomElement> trackElements(const QDomElement& root, const QString& prefix)
{
    QList<QDomElement> elements;
    const QDomElement list = root.firstChildElement(prefix + QStringLiteral("gpxtrack"));
    for (const char* name : {"locationTrack", "configuredTrack"}) {
        const QString tag = prefix + QLatin1String(name);
        for (QDomElement element = list.firstChildElement(tag); !element.isNull();
             element = element.nextSiblingElement(tag)) {
            elements.append(element.firstChildElement(QStringLiteral("trk")));
        }
    }
    return elements;
}

/// The track with what its includes name in their place: the plainest way to follow them.
LvGPXTrack trackWithIncludes(const QDomElement& trk, const QDir& folder)
{
    QDomDocument document;
    QDomElement copy = document.createElement(QStringLiteral("trk"));
    document.appendChild(copy);
    for (QDomElement child = trk.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() != includeTag) {
            copy.appendChild(document.importNode(child, true));
            continue;
        }
        const QDomElement root = LvXMLLoader::loadDocumentElement(QFileInfo(folder, child.text()));
        for (QDomElement included = root.firstChildElement(QStringLiteral("trk")).firstChildElement();
             !included.isNull(); included = included.nextSiblingElement()) {
            copy.appendChild(document.importNode(included, true));
        }
    }
    // An include in an included file is not followed.
    return LvFuzz::plainTrack(copy);
}

/// One include gives what the file holds, and no include of that file is followed.
void checkIncludes(const LvGPXTrackSelection& selection, const QList<QDomElement>& elements,
                   const QDir& folder)
{
    for (int row = 0; row < std::min<qsizetype>(selection.count(), elements.size()); ++row) {
        LvGPXTrack track = selection.value(row).track();
        LvGPXTrack expected = trackWithIncludes(elements.at(row), folder);
        if (!elements.at(row).firstChildElement(includeTag).isNull()) {
            // The kind of an included track is decided before what follows it is read.
            track.setShape(LvGPXTrackShapeEnum::unknown);
            expected.setShape(LvGPXTrackShapeEnum::unknown);
        }
        LvFuzz::expect(LvFuzz::isSameTrack(track, expected),
                       "a track holds what stands inside and what it includes");
    }
}

void checkSame(const LvGPXTrackSelection& read, const LvGPXTrackSelection& written)
{
    LvFuzz::expect(read.nominalCroppingOpacity() == written.nominalCroppingOpacity(),
                   "the cropping opacity is what was written");
    LvFuzz::expect(read.count() == written.count(), "every track is in the document");
    for (int row = 0; row < std::min(read.count(), written.count()); ++row) {
        LvFuzz::expect(LvFuzz::isWhatWasWritten(read.value(row).track(), written.value(row).track()),
                       "a track in a selection is what was written");
        LvFuzz::expect(LvFuzz::isWhatWasWritten(read.configuration(row), written.configuration(row)),
                       "a configuration in a selection is what was written");
    }
}

/// Written with files in the directory, or without files, and read back.
void checkRoundTrip(const LvGPXTrackSelection& selection, const QDir& dir)
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("document"));
    selection.toXml(root, dir);
    QDomDocument copy;
    LvFuzz::expect(LvXMLLoader::parse(document.toByteArray(), copy), "what was written is well-formed");
    checkSame(LvGPXTrackSelection(copy.documentElement(), dir, QString()), selection);
}

void checkOperations(LvGPXTrackSelection selection)
{
    LvFuzz::checkElement(selection);
    LvFuzz::checkTracks(selection.tracks());
    const LvGPXTrackSelection before = selection;
    static_cast<void>(selection.compare(before));
    static_cast<void>(selection.wouldChangeHaloToVisibleAgainst(before));
    selection.overrideColorOfTrack(0, 200);
    selection.moveTrack(0, static_cast<int>(selection.count()) - 1);
    selection.setConfiguration(LvGPXTrackConfiguration::defaultValue());
    LvFuzz::expect(selection.reduceToTrackNumber(0).count() == std::min<qsizetype>(1, selection.count()),
                   "one track is left");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    // The name of every folder is new, so that no file of an earlier input is known there.
    const QTemporaryDir folder(path(QStringLiteral("documents-XXXXXX")));
    const QTemporaryDir other(path(QStringLiteral("copies-XXXXXX")));
    QByteArray text = input;
    text.replace("{folder}", folder.path().toUtf8());

    QDomDocument document;
    LvXMLLoader::parse(text, document);
    const QDomElement root = document.documentElement();
    const QString prefix = root.attribute(QStringLiteral("prefix"));
    const LvGPXTrackSelection inlineOnly(root, QDir(QString()), prefix);
    const QList<QDomElement> elements = trackElements(root, prefix);
    expect(inlineOnly.count() == elements.size(), "every element is a track");
    checkOperations(inlineOnly);
    checkRoundTrip(inlineOnly, QDir(QString()));

    if (inlineOnly.count() > 0 && inlineOnly.count() <= mostFiles) {
        writeFiles(root, QDir(folder.path()));
        makeUnique(document, elements);
        const LvGPXTrackSelection withFiles(root, QDir(folder.path()), prefix);
        expect(withFiles.count() == inlineOnly.count(), "includes change the tracks, not their number");
        checkIncludes(withFiles, elements, QDir(folder.path()));
        checkRoundTrip(withFiles, QDir(other.path()));
        checkTracks(withFiles.tracks());
    }
}
