#include "LvMessagePanel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

LvMessagePanel::LvMessagePanel(QWidget* parent)
    : QWidget(parent)
    , myList(new QListWidget(this))
{
    myList->setObjectName(QStringLiteral("messages"));
    myList->setAccessibleName(tr("Meldungen"));
    myList->setWordWrap(true);
    myList->setUniformItemSizes(false);
    auto* copy = new QPushButton(tr("In die &Zwischenablage kopieren"), this);
    auto* clear = new QPushButton(tr("&Leeren"), this);
    connect(copy, &QPushButton::clicked, this, &LvMessagePanel::copyToClipboard);
    connect(clear, &QPushButton::clicked, myList, &QListWidget::clear);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(copy);
    buttons->addWidget(clear);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(myList, 1);
    layout->addLayout(buttons);
}

LvMessagePanel::~LvMessagePanel() = default;

void LvMessagePanel::addMessages(const QStringList& messages)
{
    myList->addItems(messages);
    myList->scrollToBottom();
}

QStringList LvMessagePanel::messages() const
{
    QStringList texts;
    for (int row = 0; row < myList->count(); ++row) {
        texts.append(myList->item(row)->text());
    }
    return texts;
}

void LvMessagePanel::copyToClipboard() const
{
    QGuiApplication::clipboard()->setText(messages().join(QLatin1Char('\n')));
}
