#include "LvPreferencesDialog.h"

#include "LvPreferencesBox.h"
#include "LvPreferencesDocuments.h"
#include "LvPreferencesGeoLocation.h"
#include "LvPreferencesMap.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

LvPreferencesDialog::LvPreferencesDialog(QWidget* parent)
    : QDialog(parent)
    , myTabs(new QTabWidget(this))
    , myButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply
                                         | QDialogButtonBox::Reset,
                                     this))
{
    setWindowTitle(tr("Einstellungen"));
    myTabs->setObjectName(QStringLiteral("tabs"));
    myTabs->setAccessibleName(tr("Bereiche der Einstellungen"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(myTabs, 1);
    layout->addWidget(myButtons);
    connect(myTabs, &QTabWidget::currentChanged, this, &LvPreferencesDialog::onTabChanged);
    connect(myButtons, &QDialogButtonBox::accepted, this, &LvPreferencesDialog::accept);
    connect(myButtons, &QDialogButtonBox::rejected, this, &LvPreferencesDialog::reject);
    connect(myButtons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &LvPreferencesDialog::apply);
    connect(myButtons->button(QDialogButtonBox::Reset), &QPushButton::clicked, this,
            [this] { revertTab(myTabs->currentIndex()); });
}

LvPreferencesDialog::~LvPreferencesDialog() = default;

void LvPreferencesDialog::addStandardPages()
{
    addPage(new LvPreferencesMap(this), tr("Karte"));
    addPage(new LvPreferencesGeoLocation(this), tr("Karte"));
    addPage(new LvPreferencesDocuments(this), tr("Dokumente"));
}

void LvPreferencesDialog::addPage(LvPreferencesBox* page, const QString& tabTitle)
{
    auto tab = static_cast<int>(myTabTypes.indexOf(page->preferencesType()));
    if (tab < 0) {
        auto* content = new QWidget(myTabs);
        auto* layout = new QVBoxLayout(content);
        layout->addStretch(1);
        myTabTypes.append(page->preferencesType());
        tab = myTabs->addTab(content, tabTitle);
    }
    auto* layout = qobject_cast<QVBoxLayout*>(myTabs->widget(tab)->layout());
    layout->insertWidget(layout->count() - 1, page); // above the stretch
    myPages.append(page);
}

void LvPreferencesDialog::accept()
{
    if (apply()) {
        QDialog::accept();
    }
}

void LvPreferencesDialog::reject()
{
    for (LvPreferencesBox* page : std::as_const(myPages)) {
        page->revertChanges();
    }
    QDialog::reject();
}

bool LvPreferencesDialog::apply()
{
    for (int tab = 0; tab < myTabs->count(); ++tab) {
        if (!canLeaveTab(tab)) {
            const QSignalBlocker blocker(myTabs); // the shown tab was asked already
            myTabs->setCurrentIndex(tab);
            myCurrentTab = tab;
            return false;
        }
    }
    for (LvPreferencesBox* page : std::as_const(myPages)) {
        page->writeToConfig();
    }
    Q_EMIT applied();
    return true;
}

void LvPreferencesDialog::showEvent(QShowEvent* event)
{
    // Not when the window system shows it again, as after minimizing: what was typed must stay.
    if (!event->spontaneous()) {
        for (LvPreferencesBox* page : std::as_const(myPages)) {
            page->readFromConfig();
        }
    }
    QDialog::showEvent(event);
}

void LvPreferencesDialog::onTabChanged(int tab)
{
    if (myCurrentTab != tab && isVisible() && !canLeaveTab(myCurrentTab)) {
        const QSignalBlocker blocker(myTabs);
        myTabs->setCurrentIndex(myCurrentTab);
        return;
    }
    myCurrentTab = tab;
}

void LvPreferencesDialog::revertTab(int tab)
{
    for (LvPreferencesBox* page : pagesOfTab(tab)) {
        page->revertChanges();
    }
}

bool LvPreferencesDialog::canLeaveTab(int tab) const
{
    const QList<LvPreferencesBox*> pages = pagesOfTab(tab);
    return std::all_of(pages.cbegin(), pages.cend(),
                       [](LvPreferencesBox* page) { return page->checkLeaveCondition(); });
}

QList<LvPreferencesBox*> LvPreferencesDialog::pagesOfTab(int tab) const
{
    QList<LvPreferencesBox*> pages;
    for (LvPreferencesBox* page : myPages) {
        if (page->preferencesType() == myTabTypes.value(tab, -1)) {
            pages.append(page);
        }
    }
    return pages;
}
