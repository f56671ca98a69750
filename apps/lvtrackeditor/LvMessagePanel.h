#pragma once

#include <QStringList>
#include <QWidget>

class QListWidget;

/// What went wrong with single files, as a list that stays until it is cleared and stops nothing.
class LvMessagePanel : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvMessagePanel)

public:
    explicit LvMessagePanel(QWidget* parent = nullptr);
    ~LvMessagePanel() override;

    void addMessages(const QStringList& messages);
    [[nodiscard]] QStringList messages() const;

private:
    void copyToClipboard() const;

    QListWidget* myList;
};
