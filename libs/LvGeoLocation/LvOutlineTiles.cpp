#include "LvOutlineTiles.h"

#include "LvConcurrent.h"
#include "LvVectorRegisters.h"

#include <algorithm>
#include <cmath>

namespace
{

// Measured on 1920 x 1080: smaller tiles repeat too many segments, larger ones have too many edges per row.
constexpr int finestTileWidth = 128;
constexpr int finestTileHeight = 64;

// Each level doubles width and height. The tiles of the coarsest are also what threads are given to do.
constexpr int coarsestLevel = 2;

// With fewer segments than this the painter's work per drawing outweighs that of the edges.
constexpr std::size_t fewSegments = 96;

// How often a segment may be drawn on average before larger tiles pay, as with long or broad lines.
constexpr std::size_t mostTilesPerSegment = 3;

// Stroking this many segments takes some hundred microseconds; less is not worth a second thread.
constexpr std::size_t segmentsWorthThreads = 512;

// A limit on memory: points of queued lines are kept.
constexpr std::size_t mostQueuedSegments = 500'000;

// By how much antialiasing, and rounding, may reach over the exact outline.
constexpr double tolerancePixels = 2.0;

// A join looks at the segment before it, and that one's first point depends on the segment before that.
constexpr int joinNeighbours = 2;

// The range of coordinates of the raster engine; with an outline beyond it the engine cuts the outline at the
// borders of the image. Close to it the rounding of arcs decides.
constexpr double painterLimit = 32767.0;
constexpr double painterLimitTolerance = 4.0;
constexpr double arcTolerance = 1.02;
constexpr int largestImageSide = 32'000;

// Farther away the doubles of the cutting are no longer exact to a small part of a pixel.
constexpr double farthestPixel = 1e9;

// Narrower lines have an algorithm of their own.
constexpr double hairlinePixels = 1.0;

/// Whether the engine may take two points for the same one: it compares with a relative tolerance of 1e-12.
bool areNearlyEqual(const QPointF& a, const QPointF& b)
{
    const double largest = std::max(std::abs(a.x()), std::abs(a.y()));
    return (a - b).manhattanLength() <= 1e-6 + 1e-10 * largest;
}

int indexOf(double pixel, int tileSize, int count)
{
    return static_cast<int>(std::clamp(pixel / tileSize, 0.0, static_cast<double>(count - 1)));
}

} // namespace

LvOutlineTiles::LvOutlineTiles(QImage& image, QPainter::RenderHints hints)
    : myPixels(image.bits())
    , mySize(image.size())
    , myBytesPerLine(image.bytesPerLine())
    , myFormat(image.format())
    , myHints(hints)
{
    const Grid regions = grid(coarsestLevel);
    myRegions.resize(static_cast<std::size_t>(regions.columns) * static_cast<std::size_t>(regions.rows));
}

QRectF LvOutlineTiles::rect() const
{
    return {QPointF(), QSizeF(mySize)};
}

LvOutlineTiles::Grid LvOutlineTiles::grid(int level) const
{
    const int width = finestTileWidth << level;
    const int height = finestTileHeight << level;
    return {width, height, (mySize.width() + width - 1) / width, (mySize.height() + height - 1) / height};
}

void LvOutlineTiles::clear()
{
    if (myIsUntouched) {
        myIsUntouched = false;
        std::fill_n(myPixels, myBytesPerLine * mySize.height(), uchar{0});
    }
}

bool LvOutlineTiles::isUntouched() const
{
    return myIsUntouched;
}

bool LvOutlineTiles::isSuitable(const QPen& pen)
{
    return pen.style() == Qt::SolidLine && !pen.isCosmetic() && pen.widthF() > hairlinePixels
        && pen.capStyle() == Qt::RoundCap && pen.joinStyle() == Qt::RoundJoin;
}

bool LvOutlineTiles::add(const std::shared_ptr<const Lines>& lines, const QPointF& offset, const QPen& pen)
{
    if (!isSuitable(pen) || !lines->areSuitable
        || std::max(mySize.width(), mySize.height()) > largestImageSide) {
        return false;
    }
    const Extent extent = extentOf(lines->bounds.translated(offset), pen.widthF());
    if (extent == Extent::Uncertain) {
        return false;
    }
    Outline outline{lines, offset, pen, false};
    outline.exceedsPainter = extent == Extent::Beyond;
    const double reach = pen.widthF() / 2.0 + tolerancePixels;
    const std::vector<Run> visible = visibleRuns(outline, reach);
    std::size_t segments = 0;
    for (const Run& run : visible) {
        segments += static_cast<std::size_t>(run.last - run.first);
    }
    if (visible.empty()) {
        return true;
    }
    const std::size_t most = segments * mostTilesPerSegment;
    int level = segments <= fewSegments ? coarsestLevel : 0;
    while (level < coarsestLevel && !distribute(outline, visible, reach, grid(level), most)) {
        ++level;
    }
    if (level == coarsestLevel && !distribute(outline, visible, reach, grid(level), most)) {
        flush();
        std::vector<Run> runs = visible;
        completeRuns(runs, outline.lines->subpaths);
        myOutlines.push_back(std::move(outline));
        myRegions.front().push_back({0, QRect(QPoint(), mySize), std::move(runs)});
        flush();
        return true;
    }
    myOutlines.push_back(std::move(outline));
    myQueuedSegments += segments;
    if (myQueuedSegments >= mostQueuedSegments) {
        flush();
    }
    return true;
}

/// Not suitable are curves, and points so close together that the stroker might skip one of them: then the
/// neighbours of a join are not what they seem to be.
std::shared_ptr<const LvOutlineTiles::Lines> LvOutlineTiles::linesOf(const QPainterPath& path)
{
    auto lines = std::make_shared<Lines>();
    lines->bounds = path.controlPointRect();
    const int count = path.elementCount();
    std::vector<QPointF>& points = lines->points;
    points.reserve(static_cast<std::size_t>(count));
    int first = 0;
    for (int index = 0; index < count && lines->areSuitable; ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        if (element.type == QPainterPath::MoveToElement) {
            lines->areSuitable = index == 0 || appendSubpath(*lines, first);
            first = index;
        } else {
            lines->areSuitable =
                element.type == QPainterPath::LineToElement && !areNearlyEqual(points.back(), element);
        }
        points.emplace_back(element.x, element.y);
    }
    lines->areSuitable = lines->areSuitable && appendSubpath(*lines, first);
    return lines;
}

std::shared_ptr<const LvOutlineTiles::Lines> LvOutlineTiles::linesOf(std::vector<QPointF>&& points)
{
    auto lines = std::make_shared<Lines>();
    lines->points = std::move(points);
    QPointF before = lines->points.front();
    double left = before.x();
    double right = left;
    double top = before.y();
    double bottom = top;
    bool areApart = true;
    for (size_t index = 1; index < lines->points.size(); ++index) {
        const QPointF point = lines->points[index];
        areApart = areApart && !areNearlyEqual(before, point);
        left = std::min(left, point.x());
        right = std::max(right, point.x());
        top = std::min(top, point.y());
        bottom = std::max(bottom, point.y());
        before = point;
    }
    lines->bounds = QRectF(left, top, right - left, bottom - top);
    lines->areSuitable = areApart && appendSubpath(*lines, 0);
    return lines;
}

/// Takes the points from the first one on for a subpath. Fails for a single point, which counts in the bounds
/// but has no outline, and for ends that are only nearly the same.
bool LvOutlineTiles::appendSubpath(Lines& lines, int first)
{
    const int last = static_cast<int>(lines.points.size()) - 1;
    if (last <= first) {
        return false;
    }
    const QPointF start = lines.points[static_cast<std::size_t>(first)];
    const QPointF end = lines.points.back();
    const bool isClosed = start.x() == end.x() && start.y() == end.y();
    lines.subpaths.push_back({first, last, isClosed});
    return isClosed || !areNearlyEqual(start, end);
}

/// Whether the outline around points with these bounds on the image exceeds the painter's range.
LvOutlineTiles::Extent LvOutlineTiles::extentOf(const QRectF& bounds, double penWidth)
{
    const auto exceeds = [](const QRectF& rect, double limit) {
        return rect.left() < -limit || rect.right() > limit || rect.top() < -limit || rect.bottom() > limit
            || rect.width() > limit || rect.height() > limit;
    };
    if (exceeds(bounds, farthestPixel)) {
        return Extent::Uncertain;
    }
    if (exceeds(bounds, painterLimit + painterLimitTolerance)) {
        return Extent::Beyond;
    }
    const double reach = penWidth / 2.0 * arcTolerance;
    if (exceeds(bounds.adjusted(-reach, -reach, reach, reach), painterLimit - painterLimitTolerance)) {
        return Extent::Uncertain;
    }
    return Extent::Within;
}

/// Appends a segment behind those that the runs have. Runs that would meet once they are lengthened are one.
void LvOutlineTiles::append(std::vector<Run>& runs, const Run& segment)
{
    if (!runs.empty() && runs.back().subpath == segment.subpath
        && segment.first - runs.back().last <= 2 * joinNeighbours) {
        runs.back().last = segment.last;
    } else {
        runs.push_back(segment);
    }
}

std::vector<LvOutlineTiles::Run> LvOutlineTiles::visibleRuns(const Outline& outline, double reach) const
{
    std::vector<Run> runs;
    const QRectF visible = rect().adjusted(-reach, -reach, reach, reach).translated(-outline.offset);
    const double left = visible.left();
    const double right = visible.right();
    const double top = visible.top();
    const double bottom = visible.bottom();
    const QPointF* points = outline.lines->points.data();
    for (std::size_t subpath = 0; subpath < outline.lines->subpaths.size(); ++subpath) {
        const Subpath& line = outline.lines->subpaths[subpath];
        for (int index = line.first; index < line.last; ++index) {
            const QPointF a = points[index];
            const QPointF b = points[index + 1];
            const bool isVisible = std::max(a.x(), b.x()) >= left && std::min(a.x(), b.x()) <= right
                && std::max(a.y(), b.y()) >= top && std::min(a.y(), b.y()) <= bottom;
            if (isVisible) {
                append(runs, {static_cast<int>(subpath), index, index + 1});
            }
        }
    }
    return runs;
}

/// Fails, leaving all as it was, if more than `most` segments would be drawn.
bool LvOutlineTiles::distribute(const Outline& outline, const std::vector<Run>& visible, double reach,
                                const Grid& grid, std::size_t most)
{
    const QPointF* points = outline.lines->points.data();
    const double x = outline.offset.x();
    const double y = outline.offset.y();
    myTileRuns.resize(static_cast<std::size_t>(grid.columns) * static_cast<std::size_t>(grid.rows));
    for (std::vector<Run>& runs : myTileRuns) {
        runs.clear();
    }
    std::size_t meetings = 0;
    for (const Run& run : visible) {
        for (int index = run.first; index < run.last; ++index) {
            const QPointF a = points[index];
            const QPointF b = points[index + 1];
            const int left = indexOf(std::min(a.x(), b.x()) + x - reach, grid.width, grid.columns);
            const int right = indexOf(std::max(a.x(), b.x()) + x + reach, grid.width, grid.columns);
            const int top = indexOf(std::min(a.y(), b.y()) + y - reach, grid.height, grid.rows);
            const int bottom = indexOf(std::max(a.y(), b.y()) + y + reach, grid.height, grid.rows);
            meetings +=
                static_cast<std::size_t>(right - left + 1) * static_cast<std::size_t>(bottom - top + 1);
            if (meetings > most) {
                return false;
            }
            for (int row = top; row <= bottom; ++row) {
                for (int column = left; column <= right; ++column) {
                    std::vector<Run>& runs =
                        myTileRuns[static_cast<std::size_t>(row * grid.columns + column)];
                    append(runs, {run.subpath, index, index + 1});
                }
            }
        }
    }
    std::size_t drawn = 0;
    for (std::vector<Run>& runs : myTileRuns) {
        completeRuns(runs, outline.lines->subpaths);
        for (const Run& run : runs) {
            drawn += static_cast<std::size_t>(run.last - run.first);
        }
    }
    if (drawn > most) {
        return false;
    }
    const Grid regions = this->grid(coarsestLevel);
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column) {
            std::vector<Run>& runs = myTileRuns[static_cast<std::size_t>(row * grid.columns + column)];
            if (runs.empty()) {
                continue;
            }
            const QRect tile(column * grid.width, row * grid.height, grid.width, grid.height);
            const int region = tile.y() / regions.height * regions.columns + tile.x() / regions.width;
            myRegions[static_cast<std::size_t>(region)].push_back(
                {myOutlines.size(), tile.intersected(QRect(QPoint(), mySize)), runs});
        }
    }
    return true;
}

/// Lengthens the runs by the neighbours that joins depend on, over the end of closed lines too.
void LvOutlineTiles::completeRuns(std::vector<Run>& runs, const std::vector<Subpath>& subpaths)
{
    std::size_t kept = 0;
    std::size_t begin = 0;
    while (begin < runs.size()) {
        std::size_t end = begin;
        while (end < runs.size() && runs[end].subpath == runs[begin].subpath) {
            ++end;
        }
        const Subpath& line = subpaths[static_cast<std::size_t>(runs[begin].subpath)];
        for (std::size_t index = begin; index < end; ++index) {
            runs[index].first -= joinNeighbours;
            runs[index].last += joinNeighbours;
            if (!line.isClosed) {
                runs[index].first = std::max(runs[index].first, line.first);
                runs[index].last = std::min(runs[index].last, line.last);
            }
        }
        if (line.isClosed) {
            const int segments = line.last - line.first;
            if (runs[begin].first + segments <= runs[end - 1].last && end - begin > 1) {
                runs[end - 1].last = runs[begin].last + segments;
                ++begin;
            }
            Run& last = runs[end - 1];
            if (end - begin == 1 && last.last - last.first >= segments) {
                last.first = line.first;
                last.last = line.last;
            }
        }
        for (; begin < end; ++begin) {
            runs[kept++] = runs[begin];
        }
    }
    runs.resize(kept);
}

QPainterPath LvOutlineTiles::pathOf(const Outline& outline, const std::vector<Run>& runs)
{
    QPainterPath path;
    int count = 0;
    for (const Run& run : runs) {
        count += run.last - run.first + 1;
    }
    path.reserve(count + 2);
    const QPointF* points = outline.lines->points.data();
    for (const Run& run : runs) {
        const Subpath& line = outline.lines->subpaths[static_cast<std::size_t>(run.subpath)];
        const int segments = line.last - line.first;
        for (int index = run.first; index <= run.last; ++index) {
            int number = index;
            if (number < line.first) {
                number += segments;
            } else if (number > line.last) {
                number -= segments;
            }
            const QPointF point = points[number];
            if (index == run.first) {
                path.moveTo(point);
            } else {
                path.lineTo(point);
            }
        }
    }
    if (outline.exceedsPainter) {
        const QPointF outside(-2.0 * painterLimit - outline.pen.widthF(), 0.0);
        path.moveTo(outside - outline.offset);
        path.lineTo(outside - outline.offset - QPointF(outline.pen.widthF(), 0.0));
    }
    return path;
}

void LvOutlineTiles::draw(const std::vector<Drawing>& drawings, QPainter& painter) const
{
    for (const Drawing& drawing : drawings) {
        const Outline& outline = myOutlines[drawing.outline];
        painter.resetTransform();
        painter.setClipRect(drawing.tile);
        painter.translate(outline.offset);
        painter.setPen(outline.pen);
        const QPainterPath path = pathOf(outline, drawing.runs);
        LvVectorRegisters::clearUpperHalves();
        painter.drawPath(path);
    }
}

void LvOutlineTiles::flush()
{
    if (myOutlines.empty()) {
        return;
    }
    // Every thread paints through an image of its own over the common pixels. It is as large as the real one:
    // the painter computes with the borders of the image, not only with those of the clip.
    const auto paint = [this](std::size_t begin, std::size_t end) {
        QImage window(myPixels, mySize.width(), mySize.height(), myBytesPerLine, myFormat);
        QPainter painter(&window);
        painter.setRenderHints(myHints);
        for (std::size_t region = begin; region < end; ++region) {
            draw(myRegions[region], painter);
        }
    };
    if (myQueuedSegments < segmentsWorthThreads) {
        paint(0, myRegions.size());
    } else {
        std::vector<std::size_t> busy;
        for (std::size_t region = 0; region < myRegions.size(); ++region) {
            if (!myRegions[region].empty()) {
                busy.push_back(region);
            }
        }
        LvConcurrent::forEachIndex(static_cast<qsizetype>(busy.size()), [&busy, &paint](qsizetype index) {
            const std::size_t region = busy[static_cast<std::size_t>(index)];
            paint(region, region + 1);
        });
    }
    for (std::vector<Drawing>& drawings : myRegions) {
        drawings.clear();
    }
    myOutlines.clear();
    myQueuedSegments = 0;
}
