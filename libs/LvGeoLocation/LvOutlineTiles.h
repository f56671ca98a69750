#pragma once

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>

#include <memory>
#include <vector>

/**
 * Strokes lines onto one image, tile by tile and in several threads; not installed.
 *
 * Every pixel becomes exactly what QPainter::drawPath() makes of it on the whole image, but in a fraction of
 * the time: an outline of thousands of edges is slow because the painter sorts all edges of each row, and
 * because it follows the line far beyond the image. Here each tile of the image gets one path of those pieces
 * of the line that may touch it, and is clipped.
 *
 * Why the pixels are equal: a pixel's coverage is the sum over all edges of the outline, in whole numbers.
 * The edges that touch a tile come out the same, because each piece is longer than what touches the tile by
 * so many segments that joins see the same neighbours. What is left out, and the caps that close the pieces,
 * are closed figures outside of the tile, and the edges of a closed figure add up to 0 everywhere outside of
 * it. All pieces must be in one path: those of several drawn one after the other would be blended twice where
 * they overlap. Clipping does not change where an edge meets a row of pixels. An outline that exceeds the
 * painter's range of coordinates is first cut at the borders of the image, which moves edges by fractions of
 * a pixel, so a tile's path is then made to exceed that range as well.
 *
 * Dashes count along the whole line, and lines of one pixel or less are drawn segment by segment and cut at
 * the clip; add() leaves both to the caller, and everything else of which the above is not certain.
 */
class LvOutlineTiles
{
public:
    struct Subpath {
        int first;
        int last;
        bool isClosed;
    };

    /// The lines of a path, which its copies on the image share.
    struct Lines {
        QRectF bounds;
        std::vector<QPointF> points;
        std::vector<Subpath> subpaths;
        bool areSuitable = true; // for tiles
    };

    /// The image has four bytes per pixel and must outlive this; nobody else holds a copy of it. What is in
    /// it does not matter, see clear().
    LvOutlineTiles(QImage& image, QPainter::RenderHints hints);

    Q_DISABLE_COPY_MOVE(LvOutlineTiles)

    ~LvOutlineTiles() = default;

    [[nodiscard]] QRectF rect() const;

    [[nodiscard]] static std::shared_ptr<const Lines> linesOf(const QPainterPath& path);

    /// One open line through at least two points.
    [[nodiscard]] static std::shared_ptr<const Lines> linesOf(std::vector<QPointF>&& points);

    /// Makes the image transparent, once; to be called before anything is drawn on it.
    void clear();

    /// Whether clear() was never called, so that there is nothing to see.
    [[nodiscard]] bool isUntouched() const;

    /// Queues the outline of lines whose points lie `offset` pixels beside where they are drawn. Returns
    /// false, and queues nothing, if it must be drawn with a painter: then call flush() first.
    [[nodiscard]] bool add(const std::shared_ptr<const Lines>& lines, const QPointF& offset, const QPen& pen);

    /// Whether add() takes outlines of such a pen.
    [[nodiscard]] static bool isSuitable(const QPen& pen);

    /// Draws what is queued, in the order it was added. Nothing is drawn without it.
    void flush();

private:
    /// Points `first` to `last` as one line. Of a closed subpath they may run over its ends: numbers beyond
    /// them go round.
    struct Run {
        int subpath;
        int first;
        int last;
    };

    /// Tiles of one size that cover the image.
    struct Grid {
        int width;
        int height;
        int columns;
        int rows;
    };

    struct Outline {
        std::shared_ptr<const Lines> lines;
        QPointF offset;
        QPen pen;
        bool exceedsPainter;
    };

    /// One outline in one tile.
    struct Drawing {
        std::size_t outline;
        QRect tile;
        std::vector<Run> runs;
    };

    enum class Extent { Within, Beyond, Uncertain };

    [[nodiscard]] Grid grid(int level) const;
    [[nodiscard]] static bool appendSubpath(Lines& lines, int first);
    [[nodiscard]] static Extent extentOf(const QRectF& bounds, double penWidth);
    static void append(std::vector<Run>& runs, const Run& segment);
    [[nodiscard]] std::vector<Run> visibleRuns(const Outline& outline, double reach) const;
    [[nodiscard]] bool distribute(const Outline& outline, const std::vector<Run>& visible, double reach,
                                  const Grid& grid, std::size_t most);
    static void completeRuns(std::vector<Run>& runs, const std::vector<Subpath>& subpaths);
    [[nodiscard]] static QPainterPath pathOf(const Outline& outline, const std::vector<Run>& runs);
    void draw(const std::vector<Drawing>& drawings, QPainter& painter) const;

    uchar* myPixels;
    QSize mySize;
    qsizetype myBytesPerLine;
    QImage::Format myFormat;
    QPainter::RenderHints myHints;
    bool myIsUntouched = true;
    std::vector<Outline> myOutlines;
    std::vector<std::vector<Drawing>> myRegions; // one list per tile of the coarsest grid
    std::vector<std::vector<Run>> myTileRuns; // of the outline that is being added
    std::size_t myQueuedSegments = 0;
};
