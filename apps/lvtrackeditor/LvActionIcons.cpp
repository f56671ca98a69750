#include "LvActionIcons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

// The macro declares a function, which must not stand in a namespace.
static void initializeResources()
{
    Q_INIT_RESOURCE(lvtrackeditor_icons); // resources of a static library wait to be asked for
}

namespace
{

/// Draws anew for every size and palette: the icons are few and small.
class LineDrawingEngine : public QIconEngine
{
public:
    explicit LineDrawingEngine(const QByteArray& svg)
        : mySvg(svg)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QGuiApplication::palette().color(
            group, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        QByteArray svg = mySvg;
        svg.replace("#000000", color.name().toLatin1());
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new LineDrawingEngine(mySvg); }

private:
    QByteArray mySvg;
};

} // namespace

QIcon LvActionIcons::icon(const QString& name)
{
    initializeResources();
    QFile file(QStringLiteral(":/lvtrackeditor/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QIcon(new LineDrawingEngine(file.readAll())); // the icon owns its engine
}
