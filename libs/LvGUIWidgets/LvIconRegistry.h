#pragma once

#include "LvSingleton.h"
#include "lvguiwidgets_export.h"

#include <QHash>
#include <QIcon>
#include <QString>
#include <QStringList>

class QAbstractButton;

/**
 * The icons of the application by name.
 *
 * Four names have a built-in icon: "ico_editListItem" (pencil), "ico_deleteListItem" (bin), "ico_fit_map"
 * (route in a frame) and "ico_add_route" (route with a plus). These are drawn as lines in the text colour of
 * the application's palette, sharp at every size and readable on light and dark. An application may register
 * an icon of its own under every name, also in the place of a built-in one. User-interface thread only.
 */
class LVGUIWIDGETS_EXPORT LvIconRegistry : public LvSingleton<LvIconRegistry>
{
    Q_DISABLE_COPY_MOVE(LvIconRegistry)
    friend class LvSingleton<LvIconRegistry>;

public:
    virtual ~LvIconRegistry();

    /// The built-in and the registered names, sorted.
    [[nodiscard]] QStringList names() const;

    /// Whether there is a built-in or a registered icon of that name.
    [[nodiscard]] bool contains(const QString& name) const;

    /// The registered icon, else the built-in one. A name without either gives a question mark in a frame, so
    /// that a missing icon is seen and its button can still be hit; it is never null.
    [[nodiscard]] QIcon icon(const QString& name) const;

    /// Registers an icon in the place of an earlier one of that name. A null icon removes what was
    /// registered: a built-in icon comes back. Buttons that have an icon already keep it.
    void registerIcon(const QString& name, const QIcon& icon);

    /// Gives the button the icon(name); nothing happens without a button.
    void setIcon(QAbstractButton* button, const QString& name) const;

private:
    LvIconRegistry();

    QHash<QString, QIcon> myBuiltInIcons;
    QHash<QString, QIcon> myRegisteredIcons;
    QIcon myUnknownIcon;
};
