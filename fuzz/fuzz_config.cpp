// Track configurations: their text, their element, and the styles of KML.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackStyleList.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDebug>
#include <QDomDocument>
#include <QDomElement>

namespace
{

void checkConfiguration(const LvGPXTrackConfiguration& configuration)
{
    const QString text = configuration.serialize();
    const LvGPXTrackConfiguration copy = LvGPXTrackConfiguration::deserialize(text);
    LvFuzz::expect(LvFuzz::isWhatWasWritten(copy, configuration), "a configuration is what was written");
    LvFuzz::expect(copy.serialize() == text, "what a text has kept it keeps for ever");

    QDomDocument document;
    QDomElement element = LvXMLBuilder::buildRootElement(document, QStringLiteral("any"));
    configuration.toXml(element);
    LvFuzz::expect(LvFuzz::isSame(LvGPXTrackConfiguration::fromXml(element), copy),
                   "element and text keep the same");
    QString log;
    QDebug(&log) << configuration;

    LvGPXTrackConfiguration changed = configuration;
    LvFuzz::expect(!changed.setLineColor(configuration.lineColor())
                       && !changed.setMarkerShape(configuration.markerShape())
                       && !changed.setSmoothingSteps(configuration.smoothingSteps()),
                   "the same again is no change");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString text = QString::fromUtf8(input);
    const LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::deserialize(text);
    checkConfiguration(configuration);

    QDomDocument document;
    LvXMLLoader::parse(text, document);
    const QDomElement root = document.documentElement();
    expect(isSame(LvGPXTrackConfiguration::fromXml(root), configuration), "text and element give the same");
    checkConfiguration(LvGPXTrackConfiguration::fromKml(root));
    static_cast<void>(LvGPXTrackStyleList::fromKml(root));
}
