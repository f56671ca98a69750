#include "LvEditorMapMenu.h"

#include "LvEditorSettings.h"
#include "LvMapWidget.h"

#include <QActionGroup>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>

namespace
{

QString builtInMap()
{
    return QStringLiteral("builtin");
}

QString noMap()
{
    return QStringLiteral("none");
}

bool isServer(const QString& mapSource)
{
    return mapSource.contains(QStringLiteral("://"));
}

} // namespace

LvEditorMapMenu::LvEditorMapMenu(LvMapWidget* map, QWidget* parent)
    : QMenu(tr("Kar&te"), parent)
    , myMap(map)
    , myChoices(new QActionGroup(this))
{
    addChoice(tr("&Eingebaute Weltkarte"), builtInMap());
    addChoice(tr("&Keine Karte"), noMap());
    addSeparator();
    addChooser(tr("Kachel&ordner…"), &LvEditorMapMenu::chooseFolder);
    addChooser(tr("&MBTiles-Datei…"), &LvEditorMapMenu::chooseArchive);
    addChooser(tr("Kachel&server…"), &LvEditorMapMenu::chooseServer);
    connect(this, &QMenu::aboutToShow, this, &LvEditorMapMenu::markPresentChoice);
    // Only what could be opened is remembered.
    connect(myMap, &LvMapWidget::mapSourceChanged, LvEditorSettings::instance(),
            &LvEditorSettings::setMapSource);
}

LvEditorMapMenu::~LvEditorMapMenu() = default;

void LvEditorMapMenu::addChoice(const QString& text, const QString& mapSource)
{
    QAction* action = addAction(text);
    action->setCheckable(true);
    action->setData(mapSource);
    myChoices->addAction(action);
    connect(action, &QAction::triggered, this, [this, mapSource] { myMap->setMapSource(mapSource); });
}

void LvEditorMapMenu::addChooser(const QString& text, void (LvEditorMapMenu::*choose)())
{
    QAction* action = addAction(text);
    action->setCheckable(true);
    myChoices->addAction(action);
    connect(action, &QAction::triggered, this, choose);
}

void LvEditorMapMenu::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(parentWidget(), tr("Kachelordner wählen"));
    if (!folder.isEmpty()) {
        myMap->setMapSource(folder);
    }
}

void LvEditorMapMenu::chooseArchive()
{
    const QString file = QFileDialog::getOpenFileName(parentWidget(), tr("MBTiles-Datei wählen"), QString(),
                                                      tr("MBTiles-Dateien (*.mbtiles)"));
    if (!file.isEmpty()) {
        myMap->setMapSource(file);
    }
}

void LvEditorMapMenu::chooseServer()
{
    const QString present = myMap->mapSource();
    bool isAccepted = false;
    const QString address =
        QInputDialog::getText(
            parentWidget(), tr("Kachelserver"),
            tr("Adresse der Kacheln mit {z}, {x} und {y} (oder {-y}, wenn die Zeilen von Süden an zählen).\n"
               "Bitte die Nutzungsbedingungen des Servers beachten und in den Einstellungen die verlangte\n"
               "Quellenangabe eintragen."),
            QLineEdit::Normal, isServer(present) ? present : QString(), &isAccepted)
            .trimmed();
    if (isAccepted && !address.isEmpty()) {
        myMap->setMapSource(address);
    }
}

void LvEditorMapMenu::markPresentChoice()
{
    const QString present = myMap->mapSource();
    const QList<QAction*> choices = myChoices->actions(); // in the order in which they were added

    enum Choice { BuiltIn, None, Folder, Archive, Server };

    Choice choice = Archive;
    if (present == builtInMap()) {
        choice = BuiltIn;
    } else if (present == noMap()) {
        choice = None;
    } else if (isServer(present)) {
        choice = Server;
    } else if (QFileInfo(present).isDir()) {
        choice = Folder;
    }
    choices.at(choice)->setChecked(true);
}
