#pragma once

#include <QByteArray>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <sys/resource.h>

/// Faults that a program may meet when it writes a file, really provoked.
namespace LvFaults
{

/// What goes wrong.
enum class Fault {
    FileSizeLimit, ///< files may not grow beyond a limit of the process
    FullDisk, ///< no room left; needs the right to mount
    FullFileTable, ///< room, but not for one more file; needs the right to mount
    ReadOnlyDirectory, ///< the directory and what is in it can be read, nothing else
    ReadOnlyFile, ///< the directory can be written, but the older file cannot
    VanishedDirectory, ///< the directory is gone
};

/// The name of the fault for the row of a test.
const char* nameOf(Fault fault);

/// While it lives, every write beyond so many bytes of a file fails, as on a full disk.
class FileSizeLimit
{
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();

private:
    rlimit myOldLimit{};
    void (*myOldHandler)(int);
};

/// While it lives, the process (all its threads, and programs that it starts) has the rights of an ordinary
/// user.
class OrdinaryUser
{
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

public:
    OrdinaryUser();
    ~OrdinaryUser();

    /// False where the process could not give up its rights.
    [[nodiscard]] bool isValid() const { return myIsValid; }

private:
    bool myWasRoot;
    bool myIsValid;
};

/// A directory with one file in it, where writing works until begin() and from end() on.
class Place
{
    Q_DISABLE_COPY_MOVE(Place)

public:
    /// Makes the directory and in it the older file with the content "older".
    Place(Fault fault, const QString& olderName);
    ~Place();

    /// False where the machine does not allow to provoke the fault: the test is to be skipped then.
    [[nodiscard]] bool isValid() const { return myIsValid; }

    [[nodiscard]] QString directory() const;
    [[nodiscard]] QString olderFile() const;

    /// All files with their contents, hidden ones as well; without those that only take the room away.
    [[nodiscard]] QMap<QString, QByteArray> content() const;

    void begin();
    void end();

private:
    void mountSmallDisk();
    void fill();

    Fault myFault;
    QTemporaryDir myParent;
    QString myOlderName;
    bool myIsValid = true;
    bool myIsMounted = false;
    std::unique_ptr<FileSizeLimit> mySizeLimit;
    std::unique_ptr<OrdinaryUser> myUser;
};

} // namespace LvFaults

Q_DECLARE_METATYPE(LvFaults::Fault)
