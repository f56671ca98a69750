#pragma once

#include <QObject>
#include <QStringList>

/**
 * The files that were opened last, the latest first, kept in the settings store of the application.
 *
 * Each object reads the store when it is asked: all of them agree, also those of other running programs.
 */
class LvRecentFiles : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvRecentFiles)

public:
    /// The longest list that is kept.
    static constexpr int maximumCount = 12;

    explicit LvRecentFiles(QObject* parent = nullptr);
    ~LvRecentFiles() override;

    /// Absolute names, without those whose files are gone; these come back when their files do.
    /// Not static: where they are kept is nobody's business.
    [[nodiscard]] QStringList fileNames() const; // NOLINT(readability-convert-member-functions-to-static)

    /// Puts the file at the first place; the last one may fall out.
    void add(const QString& fileName);

    void remove(const QString& fileName);

    void clear();

Q_SIGNALS:
    void changed();

private:
    void store(const QStringList& fileNames);
};
