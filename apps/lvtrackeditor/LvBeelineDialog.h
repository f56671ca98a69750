#pragma once

#include "LvGPXTrack.h"
#include "LvGeoPosition.h"

#include <QDialog>

#include <array>

class LvPlaceEdit;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

/**
 * Asks for two places and gives the flight line between them.
 *
 * For a click on the map the dialog must not be modal: it sends pickRequested() and waits for setPicked().
 */
class LvBeelineDialog : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvBeelineDialog)

public:
    /// The two ends, by the numbers that pickRequested() sends.
    enum Place { Start = 0, End = 1 };

    explicit LvBeelineDialog(QWidget* parent = nullptr);
    ~LvBeelineDialog() override;

    void setPlace(int place, const LvGeoPosition& position);

    /// The track along the great circle with the name in the dialog; one without points while the two places
    /// are not both valid and different.
    [[nodiscard]] LvGPXTrack beeline() const;

    void accept() override;

    /// The place that was asked for last; an invalid position leaves it as it was.
    void setPicked(const LvGeoPosition& position);

Q_SIGNALS:
    /// The user wants to choose the place with a click on the map.
    void pickRequested(int place);

private:
    void onPlaceChanged();
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QString suggestedName() const;

    std::array<LvPlaceEdit*, 2> myPlaces;
    int myPickedPlace = Start;
    QLineEdit* myName;
    QLabel* mySummary;
    QDialogButtonBox* myButtons;
};
