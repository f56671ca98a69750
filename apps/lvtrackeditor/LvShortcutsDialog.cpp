#include "LvShortcutsDialog.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QTableWidget>
#include <QVBoxLayout>

namespace
{

struct Row {
    QString keys;
    QString what;
};

QString keysOf(const QAction* action)
{
    QStringList texts;
    const QList<QKeySequence> shortcuts = action->shortcuts();
    for (const QKeySequence& shortcut : shortcuts) {
        texts.append(shortcut.toString(QKeySequence::NativeText));
    }
    return texts.join(QStringLiteral(", "));
}

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&')).remove(QStringLiteral("…"));
}

} // namespace

LvShortcutsDialog::LvShortcutsDialog(const QList<QAction*>& actions, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Tastenkürzel"));
    QList<Row> rows;
    for (const QAction* action : actions) {
        if (!action->shortcuts().isEmpty()) {
            rows.append({keysOf(action), withoutMnemonic(action->text())});
        }
    }
    const QString zoomKeys = QStringLiteral("+, -");
    rows.append({tr("Pfeiltasten"), tr("Karte: verschieben")});
    rows.append({zoomKeys, tr("Karte: vergrößern, verkleinern")});
    rows.append({tr("Pos1"), tr("Karte: alle Spuren zeigen")});
    rows.append({tr("Mausrad, Doppelklick"), tr("Karte: unter dem Zeiger vergrößern")});
    rows.append({tr("Pfeil links, Pfeil rechts"), tr("Profil: Zeiger verschieben")});
    rows.append({tr("Leertaste"), tr("Liste der Spuren: zeigen oder ausblenden")});

    auto* table = new QTableWidget(static_cast<int>(rows.count()), 2, this);
    table->setAccessibleName(tr("Tastenkürzel"));
    table->setHorizontalHeaderLabels({tr("Tasten"), tr("Wirkung")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    for (int row = 0; row < table->rowCount(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(rows.at(row).keys));
        table->setItem(row, 1, new QTableWidgetItem(rows.at(row).what));
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(buttons);
    const QSize rowSize = fontMetrics().boundingRect(QString(64, QLatin1Char('n'))).size();
    resize(rowSize.width(), rowSize.height() * 32);
}

LvShortcutsDialog::~LvShortcutsDialog() = default;
