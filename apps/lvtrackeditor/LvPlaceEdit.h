#pragma once

#include "LvGeoPosition.h"

#include <QGroupBox>
#include <QString>

class LvGeoArc;
class LvGeoArcEdit;
class QComboBox;
class QLabel;
class QLineEdit;

/**
 * Asks for one place: as a text with coordinates in any usual form, from a list of places, by a click on a
 * map that the owner shows, or as two angles.
 *
 * Every way keeps the position as exact as it came; only an angle that is edited becomes what its editor
 * shows.
 */
class LvPlaceEdit : public QGroupBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvPlaceEdit)

public:
    explicit LvPlaceEdit(const QString& title, QWidget* parent = nullptr);
    ~LvPlaceEdit() override;

    /// Invalid while there is none, or one out of the range of its angles.
    [[nodiscard]] LvGeoPosition position() const;

    /// Shows the position; an invalid one empties the place. Sends positionChanged().
    void setPosition(const LvGeoPosition& position);

    /// The name of the chosen place; empty when the position came another way.
    [[nodiscard]] QString placeName() const;

    /// What is wrong with the input, a whole sentence; empty when nothing is.
    [[nodiscard]] QString errorText() const;

Q_SIGNALS:
    void positionChanged();
    /// The user wants to click on the map; setPosition() is the answer.
    void pickRequested();

private:
    void onTextEdited(const QString& text);
    void onSampleChosen(int row);
    void onArcEdited(bool isLatitude);
    void showAngles();
    void updateError();
    void connectEditors(LvGeoArcEdit* edit, bool isLatitude);
    static void showAngle(LvGeoArcEdit* edit, const LvGeoArc& angle);

    LvGeoPosition myPosition;
    bool myIsShowing = false; // while the angles are being set
    QLineEdit* myText;
    QComboBox* mySamples;
    LvGeoArcEdit* myLatitude;
    LvGeoArcEdit* myLongitude;
    QLabel* myError;
};
