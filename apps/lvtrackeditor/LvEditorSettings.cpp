#include "LvEditorSettings.h"

using TrackStorage = LvTrackDocumentFile::TrackStorage;

LvEditorSettings::LvEditorSettings()
    : myMapSource(QStringLiteral("mapSource"), QStringLiteral("builtin"))
    , myAttribution(QStringLiteral("mapAttribution"), QString())
    , myHasSeparateTrackFiles(QStringLiteral("separateTrackFiles"), false)
    , myWindowGeometry(QStringLiteral("windowGeometry"), QByteArray())
    , myWindowState(QStringLiteral("windowState"), QByteArray())
    , myLastDirectory(QStringLiteral("lastDirectory"), QString())
{
}

LvEditorSettings::~LvEditorSettings() = default;

void LvEditorSettings::setupInstance()
{
    loadSettings();
}

void LvEditorSettings::loadSettings()
{
    load(myMapSource);
    load(myAttribution);
    load(myHasSeparateTrackFiles);
    load(myWindowGeometry);
    load(myWindowState);
    load(myLastDirectory);
}

void LvEditorSettings::saveSettings()
{
    save(myMapSource);
    save(myAttribution);
    save(myHasSeparateTrackFiles);
    save(myWindowGeometry);
    save(myWindowState);
    save(myLastDirectory);
}

QString LvEditorSettings::mapSource() const
{
    return myMapSource.value();
}

void LvEditorSettings::setMapSource(const QString& mapSource)
{
    if (store(myMapSource, mapSource)) {
        Q_EMIT changed();
    }
}

QString LvEditorSettings::attribution() const
{
    return myAttribution.value();
}

void LvEditorSettings::setAttribution(const QString& attribution)
{
    if (store(myAttribution, attribution)) {
        Q_EMIT changed();
    }
}

TrackStorage LvEditorSettings::trackStorage() const
{
    return myHasSeparateTrackFiles.value() ? TrackStorage::SeparateFiles : TrackStorage::Inline;
}

void LvEditorSettings::setTrackStorage(TrackStorage storage)
{
    if (store(myHasSeparateTrackFiles, storage == TrackStorage::SeparateFiles)) {
        Q_EMIT changed();
    }
}

QByteArray LvEditorSettings::windowGeometry() const
{
    return myWindowGeometry.value();
}

void LvEditorSettings::setWindowGeometry(const QByteArray& geometry)
{
    store(myWindowGeometry, geometry);
}

QByteArray LvEditorSettings::windowState() const
{
    return myWindowState.value();
}

void LvEditorSettings::setWindowState(const QByteArray& state)
{
    store(myWindowState, state);
}

QString LvEditorSettings::lastDirectory() const
{
    return myLastDirectory.value();
}

void LvEditorSettings::setLastDirectory(const QString& directory)
{
    store(myLastDirectory, directory);
}

template <class T>
bool LvEditorSettings::store(LvConfigItem<T>& item, const T& value)
{
    if (!item.setValue(value)) {
        return false;
    }
    save(item);
    return true;
}
