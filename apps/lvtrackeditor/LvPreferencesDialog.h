#pragma once

#include <QDialog>
#include <QList>

class LvPreferencesBox;
class QDialogButtonBox;
class QTabWidget;

/**
 * Hosts preference pages by the protocol of LvPreferencesItem.
 *
 * The pages read the settings when the dialog is shown. A page that cannot be left keeps the user on its tab;
 * then nothing at all is written. "Reset" reverts the shown tab, "Cancel" and closing revert all of them.
 */
class LvPreferencesDialog : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvPreferencesDialog)

public:
    /// A dialog without pages.
    explicit LvPreferencesDialog(QWidget* parent = nullptr);
    ~LvPreferencesDialog() override;

    /// Adds the pages of this program and of the library.
    void addStandardPages();

    /// Adds a page and takes it over. Pages of one type share a tab, which has the title of the first one.
    void addPage(LvPreferencesBox* page, const QString& tabTitle);

    void accept() override;
    void reject() override;

    /// Writes the settings of all pages, if all of them can be left; returns whether it did.
    bool apply();

Q_SIGNALS:
    /// The settings have been written.
    void applied();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void onTabChanged(int tab);
    void revertTab(int tab);
    [[nodiscard]] bool canLeaveTab(int tab) const;
    [[nodiscard]] QList<LvPreferencesBox*> pagesOfTab(int tab) const;

    QTabWidget* myTabs;
    QDialogButtonBox* myButtons;
    QList<LvPreferencesBox*> myPages;
    QList<int> myTabTypes; // the type of the pages, per tab
    int myCurrentTab = 0;
};
