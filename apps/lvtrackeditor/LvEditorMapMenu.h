#pragma once

#include <QMenu>

class LvMapWidget;
class QActionGroup;

/// The menu that chooses the map below the tracks, with the present choice marked. A map that could be
/// opened is remembered for the next start.
class LvEditorMapMenu : public QMenu
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvEditorMapMenu)

public:
    LvEditorMapMenu(LvMapWidget* map, QWidget* parent);
    ~LvEditorMapMenu() override;

private:
    void addChoice(const QString& text, const QString& mapSource);
    void addChooser(const QString& text, void (LvEditorMapMenu::*choose)());
    void chooseFolder();
    void chooseArchive();
    void chooseServer();
    void markPresentChoice();

    LvMapWidget* myMap;
    QActionGroup* myChoices;
};
