#pragma once

#include <QDialog>
#include <QList>

class QAction;

/// The help page of the keyboard: every action that has a shortcut, and the keys of the map.
class LvShortcutsDialog : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvShortcutsDialog)

public:
    explicit LvShortcutsDialog(const QList<QAction*>& actions, QWidget* parent = nullptr);
    ~LvShortcutsDialog() override;
};
