#pragma once

#include <QDir>

/**
 * Directories that no other thread looks at; not installed.
 *
 * Copies of a QDir share what its constant functions find out and remember without a guard: one directory
 * that several threads were given would not be read safely by them, not even by a comparison.
 */
namespace LvOwnDirectory
{

/// An equal directory that shares nothing with it. Only asks for what does not change.
[[nodiscard]] inline QDir copyOf(const QDir& directory)
{
    QDir own(directory.path());
    own.setNameFilters(directory.nameFilters());
    own.setSorting(directory.sorting());
    own.setFilter(directory.filter());
    return own;
}

/// QDir::operator==() for directories that other threads may compare as well.
[[nodiscard]] inline bool areEqual(const QDir& a, const QDir& b)
{
    return (a.path() == b.path() && a.filter() == b.filter() && a.sorting() == b.sorting()
            && a.nameFilters() == b.nameFilters())
        || copyOf(a) == copyOf(b);
}

} // namespace LvOwnDirectory
