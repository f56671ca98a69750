#include "LvFaults.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace
{

constexpr uid_t nobody = 65534;
constexpr rlim_t sizeLimit = 100; // bytes
const char* const smallDiskOptions = "size=1m,nr_inodes=12";
const QString fillerPrefix = QStringLiteral("filler");

/// The rights of others, given to the owner and to the group as well.
QFile::Permissions forAll(QFile::Permissions others)
{
    constexpr int group = 4; // bits from the rights of others to those of the group
    constexpr int owner = 12; // and to those of the owner and of the user
    constexpr int user = 8;
    const auto bits = others.toInt();
    return QFile::Permissions::fromInt(bits | bits << group | bits << user | bits << owner);
}

/// A disk that is gone when the process has ended, however it ends: nobody else sees it.
bool mountForThisProcess(const QByteArray& path)
{
    static const bool myIsAlone = ::unshare(CLONE_NEWNS) == 0
        && ::mount(nullptr, "/", nullptr, static_cast<unsigned long>(MS_REC) | MS_PRIVATE, nullptr) == 0;
    return myIsAlone && ::mount("tmpfs", path.constData(), "tmpfs", 0, smallDiskOptions) == 0;
}

} // namespace

const char* LvFaults::nameOf(Fault fault)
{
    switch (fault) {
    case Fault::FileSizeLimit:
        return "limit of the file size";
    case Fault::FullDisk:
        return "full disk";
    case Fault::FullFileTable:
        return "no file more on the disk";
    case Fault::ReadOnlyDirectory:
        return "read-only directory";
    case Fault::ReadOnlyFile:
        return "read-only file";
    case Fault::VanishedDirectory:
        return "vanished directory";
    }
    return "";
}

LvFaults::FileSizeLimit::FileSizeLimit(rlim_t bytes)
    : myOldHandler(std::signal(SIGXFSZ, SIG_IGN)) // programs started meanwhile ignore it as well
{
    ::getrlimit(RLIMIT_FSIZE, &myOldLimit);
    const rlimit limit{bytes, myOldLimit.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

LvFaults::FileSizeLimit::~FileSizeLimit()
{
    ::setrlimit(RLIMIT_FSIZE, &myOldLimit);
    std::signal(SIGXFSZ, myOldHandler);
}

LvFaults::OrdinaryUser::OrdinaryUser()
    : myWasRoot(::geteuid() == 0)
    // The saved identity stays, to come back to.
    , myIsValid(!myWasRoot || ::setresuid(nobody, nobody, 0) == 0)
{
}

LvFaults::OrdinaryUser::~OrdinaryUser()
{
    if (myWasRoot && myIsValid && ::setresuid(0, 0, 0) != 0) {
        qFatal("the process cannot get its rights back");
    }
}

LvFaults::Place::Place(Fault fault, const QString& olderName)
    : myFault(fault)
    , myOlderName(olderName)
{
    // An ordinary user, whom the directory does not belong to, shall get into it.
    const auto everybody = forAll(QFile::ReadOther | QFile::WriteOther | QFile::ExeOther);
    QFile::setPermissions(myParent.path(), everybody);
    QDir().mkdir(directory());
    if (fault == Fault::FullDisk || fault == Fault::FullFileTable) {
        mountSmallDisk();
    }
    QFile::setPermissions(directory(), everybody);
    QFile older(olderFile());
    myIsValid = myIsValid && older.open(QIODevice::WriteOnly) && older.write("older") == 5;
}

LvFaults::Place::~Place()
{
    end();
    if (myIsMounted) {
        ::umount2(QFile::encodeName(directory()).constData(), MNT_DETACH);
    }
}

QString LvFaults::Place::directory() const
{
    return myParent.filePath(QStringLiteral("place"));
}

QString LvFaults::Place::olderFile() const
{
    return QDir(directory()).filePath(myOlderName);
}

QMap<QString, QByteArray> LvFaults::Place::content() const
{
    QMap<QString, QByteArray> files;
    const QStringList names = QDir(directory()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        QFile file(QDir(directory()).filePath(name));
        if (!name.startsWith(fillerPrefix)) {
            files.insert(name, file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)"));
        }
    }
    return files;
}

void LvFaults::Place::begin()
{
    switch (myFault) {
    case Fault::FileSizeLimit:
        mySizeLimit = std::make_unique<FileSizeLimit>(sizeLimit);
        break;
    case Fault::FullDisk:
    case Fault::FullFileTable:
        fill();
        break;
    case Fault::ReadOnlyDirectory:
        QFile::setPermissions(directory(), forAll(QFile::ReadOther | QFile::ExeOther));
        myUser = std::make_unique<OrdinaryUser>();
        myIsValid = myUser->isValid();
        break;
    case Fault::ReadOnlyFile:
        QFile::setPermissions(olderFile(), forAll(QFile::ReadOther));
        myUser = std::make_unique<OrdinaryUser>();
        myIsValid = myUser->isValid();
        break;
    case Fault::VanishedDirectory:
        myIsValid = QDir().rename(directory(), myParent.filePath(QStringLiteral("elsewhere")));
        break;
    }
}

void LvFaults::Place::end()
{
    mySizeLimit.reset();
    myUser.reset();
    if (myFault == Fault::VanishedDirectory && !QFile::exists(directory())) {
        QDir().rename(myParent.filePath(QStringLiteral("elsewhere")), directory());
    }
    QFile::setPermissions(directory(), QFile::permissions(directory()) | forAll(QFile::WriteOther));
    QFile::setPermissions(olderFile(), QFile::permissions(olderFile()) | QFile::WriteOwner);
    const QStringList fillers = QDir(directory()).entryList({fillerPrefix + QLatin1Char('*')}, QDir::Files);
    for (const QString& name : fillers) {
        QFile::remove(QDir(directory()).filePath(name));
    }
}

void LvFaults::Place::mountSmallDisk()
{
    myIsMounted = mountForThisProcess(QFile::encodeName(directory()));
    myIsValid = myIsMounted;
}

void LvFaults::Place::fill()
{
    constexpr int more = 1000; // than the disk can take
    const QByteArray bytes = myFault == Fault::FullDisk ? QByteArray(4096, 'x') : QByteArray();
    QFile filler;
    for (int count = 0; count < more; ++count) {
        if (!filler.isOpen() || myFault == Fault::FullFileTable) {
            filler.close();
            filler.setFileName(QDir(directory()).filePath(fillerPrefix + QString::number(count)));
            if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
                return;
            }
        }
        if (filler.write(bytes) != bytes.size()) {
            return;
        }
    }
    myIsValid = false;
}
