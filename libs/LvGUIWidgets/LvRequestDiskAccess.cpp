#include "LvRequestDiskAccess.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>
#include <QThread>

#include <utility>

namespace
{

bool canShowDialog()
{
    const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    return application != nullptr && application->thread() == QThread::currentThread();
}

} // namespace

LvRequestDiskAccess::LvRequestDiskAccess() = default;
LvRequestDiskAccess::~LvRequestDiskAccess() = default;

QString LvRequestDiskAccess::getOpenFileName(int mode, const QString& filter, const QString& title,
                                             const QString& directory) const
{
    if (mode != openForReading) {
        return {};
    }
    if (myAsker) {
        return myAsker(title, nameFilters(filter), directory);
    }
    if (!canShowDialog()) {
        return {};
    }
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, directory, nameFilters(filter));
}

QString LvRequestDiskAccess::nameFilters(const QString& patterns)
{
    QString allFiles = QCoreApplication::translate("LvRequestDiskAccess", "Alle Dateien (*)");
    const QString wanted = patterns.simplified();
    if (wanted.isEmpty()) {
        return allFiles;
    }
    const bool hasLabel = wanted.contains(u'(');
    const QString supported = hasLabel
        ? wanted
        : QCoreApplication::translate("LvRequestDiskAccess", "Unterstützte Dateien (%1)").arg(wanted);
    return supported + QStringLiteral(";;") + allFiles;
}

void LvRequestDiskAccess::setAsker(Asker asker)
{
    myAsker = std::move(asker);
}
