#include "LvGPXConfiguredTrackList.h"

#include "LvTrackSelectionFactory.h"

#include <QDir>
#include <QDomElement>

#include <algorithm>

LvGPXConfiguredTrackList::LvGPXConfiguredTrackList() = default;

LvGPXConfiguredTrackList::LvGPXConfiguredTrackList(const LvGPXConfiguredTrack& track)
    : myTracks({track})
{
}

LvGPXConfiguredTrackList::LvGPXConfiguredTrackList(const QList<LvGPXConfiguredTrack>& tracks)
    : myTracks(tracks)
{
}

LvGPXConfiguredTrackList::LvGPXConfiguredTrackList(std::initializer_list<LvGPXConfiguredTrack> tracks)
    : myTracks(tracks)
{
}

LvGPXConfiguredTrackList::LvGPXConfiguredTrackList(const QDomElement& parent, const QString& tagName,
                                                   const QDir& dir)
{
    for (QDomElement child = parent.firstChildElement(tagName); !child.isNull();
         child = child.nextSiblingElement(tagName)) {
        myTracks.append(LvGPXConfiguredTrack(child, dir));
    }
}

LvGPXConfiguredTrackList::LvGPXConfiguredTrackList(const LvGPXConfiguredTrackList& other) = default;
LvGPXConfiguredTrackList::LvGPXConfiguredTrackList(LvGPXConfiguredTrackList&& other) noexcept = default;
LvGPXConfiguredTrackList&
LvGPXConfiguredTrackList::operator=(const LvGPXConfiguredTrackList& other) = default;
LvGPXConfiguredTrackList&
LvGPXConfiguredTrackList::operator=(LvGPXConfiguredTrackList&& other) noexcept = default;
LvGPXConfiguredTrackList::~LvGPXConfiguredTrackList() = default;

LvGPXConfiguredTrackList LvGPXConfiguredTrackList::fromFile()
{
    return LvTrackSelectionFactory::instance()->askUserReadFile();
}

bool LvGPXConfiguredTrackList::operator==(const LvGPXConfiguredTrackList& other) const
{
    return myTracks == other.myTracks;
}

bool LvGPXConfiguredTrackList::isValid() const
{
    return !myTracks.isEmpty();
}

bool LvGPXConfiguredTrackList::isEmpty() const
{
    return myTracks.isEmpty();
}

qsizetype LvGPXConfiguredTrackList::count() const
{
    return myTracks.count();
}

bool LvGPXConfiguredTrackList::checkRange(int row) const
{
    return row >= 0 && row < myTracks.count();
}

const LvGPXConfiguredTrack& LvGPXConfiguredTrackList::at(qsizetype row) const
{
    return myTracks.at(row);
}

const LvGPXConfiguredTrack& LvGPXConfiguredTrackList::operator[](qsizetype row) const
{
    return myTracks.at(row);
}

LvGPXConfiguredTrack& LvGPXConfiguredTrackList::operator[](qsizetype row)
{
    return myTracks[row];
}

LvGPXConfiguredTrackList::const_iterator LvGPXConfiguredTrackList::begin() const
{
    return myTracks.cbegin();
}

LvGPXConfiguredTrackList::const_iterator LvGPXConfiguredTrackList::end() const
{
    return myTracks.cend();
}

LvGPXConfiguredTrackList::iterator LvGPXConfiguredTrackList::begin()
{
    return myTracks.begin();
}

LvGPXConfiguredTrackList::iterator LvGPXConfiguredTrackList::end()
{
    return myTracks.end();
}

void LvGPXConfiguredTrackList::append(const LvGPXConfiguredTrack& track)
{
    myTracks.append(track);
}

void LvGPXConfiguredTrackList::append(const LvGPXConfiguredTrackList& tracks)
{
    const QList<LvGPXConfiguredTrack> others = tracks.myTracks; // a list may be appended to itself
    myTracks.append(others);
}

void LvGPXConfiguredTrackList::removeAt(int row)
{
    myTracks.removeAt(row);
}

void LvGPXConfiguredTrackList::moveTrack(int from, int to)
{
    if (from != to) {
        myTracks.move(from, to);
    }
}

LvGPXTrackConfiguration LvGPXConfiguredTrackList::configuration(int row) const
{
    return checkRange(row) ? myTracks.at(row).configuration() : LvGPXConfiguredTrack().configuration();
}

bool LvGPXConfiguredTrackList::setConfiguration(int row, const LvGPXTrackConfiguration& configuration)
{
    LvGPXTrackConfiguration adapted = configuration;
    if (!adapted.trackShape().isValid()) {
        adapted.setTrackShape(LvGPXTrackShapeEnum::automatic);
    }
    if (!checkRange(row) || adapted == myTracks.at(row).configuration()) {
        return false;
    }
    myTracks[row].setConfiguration(adapted);
    return true;
}

LvGPXTrackSelectionComparisonResult
LvGPXConfiguredTrackList::compare(const LvGPXConfiguredTrackList& other) const
{
    LvGPXTrackSelectionComparisonResult result;
    const auto common = static_cast<int>(std::min(count(), other.count()));
    for (int row = 0; row < common; ++row) {
        const LvGPXTrackAspect aspects = at(row).differentAspects(other.at(row));
        if (aspects) {
            result.addChangingTrack(row);
            result.addChangingAspects(aspects);
        }
    }
    return result;
}

bool LvGPXConfiguredTrackList::wouldChangeHaloToVisibleAgainst(const LvGPXConfiguredTrackList& previous) const
{
    const qsizetype common = std::min(count(), previous.count());
    for (qsizetype row = 0; row < common; ++row) {
        if (at(row).wouldChangeHaloToVisibleAgainst(previous.at(row))) {
            return true;
        }
    }
    return false;
}

void LvGPXConfiguredTrackList::toXml(QDomElement& parent, const QString& tagName, const QDir& dir) const
{
    for (const LvGPXConfiguredTrack& track : myTracks) {
        track.toXml(parent, tagName, dir);
    }
}
