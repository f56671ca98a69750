#pragma once

#include "lvcore_export.h"

#include <QCoreApplication>
#include <QObject>
#include <QReadLocker>
#include <QReadWriteLock>
#include <QThread>
#include <QWriteLocker>

#include <type_traits>

/**
 * The base of all process-wide services: class LvX : public LvSingleton<LvX>, reached through
 * LvX::instance().
 *
 * The instance is created on first use and lives until the process ends. A QObject belongs to the thread of
 * the application, whichever thread asked first. A service with a private constructor befriends
 * LvSingleton<LvX>.
 *
 * The template carries the export macro: with hidden visibility each library would otherwise get an instance
 * of its own. The service class itself must be exported as well.
 */
template <class T>
class LVCORE_EXPORT LvSingleton
{
public:
    Q_DISABLE_COPY_MOVE(LvSingleton)

    /// The one instance, created when it does not exist yet. Safe to call from any thread.
    static T* instance();

    /// Called once, right after the instance has been created. The lock of the creation is held meanwhile: an
    /// implementation must not ask for the instance() of its own type.
    virtual void setupInstance();

protected:
    LvSingleton() = default;
    ~LvSingleton() = default; // not virtual: nobody owns a service through this base
};

template <class T>
T* LvSingleton<T>::instance()
{
    static QReadWriteLock myLock;
    static T* myInstance = nullptr;
    {
        const QReadLocker locker(&myLock);
        if (myInstance != nullptr) {
            return myInstance;
        }
    }
    const QWriteLocker locker(&myLock);
    if (myInstance == nullptr) {
        myInstance = new T;
        static_cast<LvSingleton<T>*>(myInstance)->setupInstance();
        if constexpr (std::is_base_of_v<QObject, T>) {
            // After the set-up, so that children made there come along.
            const QCoreApplication* application = QCoreApplication::instance();
            if (application != nullptr && myInstance->thread() != application->thread()) {
                myInstance->moveToThread(application->thread());
            }
        }
    }
    return myInstance;
}

template <class T>
void LvSingleton<T>::setupInstance()
{
}
