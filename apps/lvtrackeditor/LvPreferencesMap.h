#pragma once

#include "LvPreferencesBox.h"

#include <QString>
#include <QStringList>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

/**
 * The preferences page of the map below the tracks and of its attribution. It cannot be left while the map
 * does not exist or the address is none.
 */
class LvPreferencesMap : public LvPreferencesBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvPreferencesMap)

public:
    explicit LvPreferencesMap(QWidget* parent = nullptr);
    ~LvPreferencesMap() override;

    void readFromConfig() override;
    void writeToConfig() override;
    bool checkLeaveCondition() override;

private:
    enum Kind { BuiltIn, None, Folder, File, Url, KindCount };

    [[nodiscard]] Kind kind() const;
    [[nodiscard]] QString mapSource() const;
    [[nodiscard]] QString findError() const;
    static Kind kindOf(const QString& mapSource);
    void showKind();
    void browse();
    void showError(const QString& text);

    QComboBox* myKind;
    QLabel* myLocationCaption;
    QLineEdit* myLocation;
    QPushButton* myBrowse;
    QLineEdit* myAttribution;
    QLabel* myError;
    QStringList myLocations; // per kind, so that looking at another kind loses nothing
    Kind myShownKind = BuiltIn;
};
