// What documents hold: a configuration, a selection of tracks with includes, and the keys of enumerations.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackSelection.h"
#include "LvGPXTrackShape.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDebug>
#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QTemporaryDir>

#include <cstring>

namespace
{

// Each track written into a folder becomes a file, and the registry of the files keeps it for ever.
constexpr qsizetype mostFiles = 4;

template <class Wrapper>
void checkKeys(const QString& text, quint32 bits)
{
    const auto* table = Wrapper().enumToStringTable();
    const auto value = Wrapper(text).value();
    LvFuzz::expect(table->decodeCSV(table->encodeCSV(value)) == value, "keys give their value back");
    const auto any = Wrapper(bits).value();
    const auto named = static_cast<quint32>(table->decodeCSV(table->encodeCSV(any)));
    LvFuzz::expect((named & ~bits) == 0, "keys add no flag");
    LvFuzz::expect(static_cast<qint32>(bits) > 0 || named == 0, "a value below 1 has no keys");
    static_cast<void>(table->toString(any));
    static_cast<void>(table->decode(text));
}

void checkConfiguration(const LvGPXTrackConfiguration& configuration)
{
    const QString text = configuration.serialize();
    const LvGPXTrackConfiguration copy = LvGPXTrackConfiguration::deserialize(text);
    LvFuzz::expect(LvFuzz::isWhatWasWritten(copy, configuration), "a configuration is what was written");
    LvFuzz::expect(copy.serialize() == text, "what a text has kept it keeps for ever");
    QString log;
    QDebug(&log) << configuration;
}

void checkSelection(const LvGPXTrackSelection& read, const LvGPXTrackSelection& written)
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

void checkSelection(const LvGPXTrackSelection& selection, const QDir& dir)
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("document"));
    selection.toXml(root, dir);
    QDomDocument copy;
    LvFuzz::expect(LvXMLLoader::parse(document.toByteArray(), copy), "what was written is well-formed");
    checkSelection(LvGPXTrackSelection(copy.documentElement(), dir, QString()), selection);
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
    const QString text = QString::fromUtf8(input);
    quint32 bits = 0;
    std::memcpy(&bits, input.constData(),
                std::min<std::size_t>(sizeof bits, static_cast<std::size_t>(input.size())));
    checkKeys<LvGPXTrackShape>(text, bits);
    checkKeys<LvGPXMarkerShape>(text, bits);
    checkKeys<LvGPXTrackDisplayOptions>(text, bits);
    checkConfiguration(LvGPXTrackConfiguration::deserialize(text));

    QDomDocument document;
    LvXMLLoader::parse(input, document);
    const QDomElement root = document.documentElement();
    const QString prefix = root.attribute(QStringLiteral("prefix"));
    const LvGPXTrackSelection inlineOnly(root, QDir(QString()), prefix);
    checkOperations(inlineOnly);
    checkSelection(inlineOnly, QDir(QString()));

    if (inlineOnly.count() > 0 && inlineOnly.count() <= mostFiles) {
        // The name of every folder is new, so that no file of an earlier input is known there.
        const QTemporaryDir folder(path(QStringLiteral("documents-XXXXXX")));
        const LvGPXTrackSelection withFiles(root, QDir(folder.path()), prefix);
        expect(withFiles.count() == inlineOnly.count(), "includes change the tracks, not their number");
        if (!text.contains(QLatin1String("include"))) {
            checkSelection(withFiles, QDir(folder.path()));
        }
    }
}
