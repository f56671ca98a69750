#include "LvTrackSelectionFactory.h"

#include "LvLogger.h"
#include "LvRequestDiskAccess.h"
#include "LvTrackSelectionFactoryGPXFile.h"
#include "LvTrackSelectionFactoryKmlFile.h"

#include <QObject>

#include <algorithm>

namespace
{

constexpr int openExistingFile = 1;

} // namespace

LvTrackSelectionFactory::LvTrackSelectionFactory()
    : myFactories({new LvTrackSelectionFactoryGPXFile, new LvTrackSelectionFactoryKmlFile})
{
}

LvTrackSelectionFactory::~LvTrackSelectionFactory()
{
    qDeleteAll(myFactories);
}

bool LvTrackSelectionFactory::supportsFile(const QUrl& url) const
{
    return std::any_of(
        myFactories.cbegin(), myFactories.cend(),
        [&url](const LvTrackSelectionFactoryAbstract* factory) { return factory->supportsFile(url); });
}

QStringList LvTrackSelectionFactory::supportedFileFormats() const
{
    QStringList formats;
    for (const LvTrackSelectionFactoryAbstract* factory : myFactories) {
        formats.append(factory->supportedFileFormats());
    }
    return formats;
}

LvGPXConfiguredTrackList LvTrackSelectionFactory::createConfiguredTrackList(const QUrl& url) const
{
    for (const LvTrackSelectionFactoryAbstract* factory : myFactories) {
        if (factory->supportsFile(url)) {
            LvLogger::instance()->logOSM(QStringLiteral("ACTION:useFactory VALUE:%1")
                                             .arg(factory->supportedFileFormats().join(QLatin1Char(','))));
            return factory->createConfiguredTrackList(url);
        }
    }
    return {};
}

LvGPXConfiguredTrackList LvTrackSelectionFactory::createConfiguredTrackList(const QList<QUrl>& urls) const
{
    LvGPXConfiguredTrackList tracks;
    for (const QUrl& url : urls) {
        const LvGPXConfiguredTrackList ofOneFile = createConfiguredTrackList(url);
        if (ofOneFile.isValid()) {
            tracks.append(ofOneFile);
        }
    }
    return tracks;
}

LvGPXConfiguredTrackList LvTrackSelectionFactory::askUserReadFile() const
{
    const QString name = LvRequestDiskAccess::instance()->getOpenFileName(
        openExistingFile, supportedFileFormats().join(QLatin1Char(' ')),
        QObject::tr("Datei für Route öffnen"), QString());
    if (name.isEmpty()) {
        return {};
    }
    return createConfiguredTrackList(QUrl::fromLocalFile(name));
}
