#pragma once

#include <QIcon>
#include <QString>

/**
 * The icons of the program's actions: line drawings of its resources in a text colour of the palette, so that
 * they can be read on light and dark. User-interface thread only.
 */
class LvActionIcons
{
public:
    LvActionIcons() = delete;

    /// The icon of a name such as "open" in the colours of the application's palette at the time of drawing;
    /// a null icon for a name without a drawing.
    static QIcon icon(const QString& name);
};
