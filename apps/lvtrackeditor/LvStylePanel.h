#pragma once

#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrackConfiguration.h"

#include <QScrollArea>

#include <functional>

class LvColorButton;
class LvGPXFullShapeListModel;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSpinBox;

/**
 * Edits the style of a track: shape and marker, line, area, halo and smoothing.
 *
 * Its labels have no keys with Alt: those belong to the menus of the window that the panel is part of.
 *
 * A change replaces the one property only, so that what the panel cannot show (fractions of a pixel, a
 * smoothing beyond its range) survives the others. Setting a track sends no signal.
 */
class LvStylePanel : public QScrollArea
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvStylePanel)

public:
    explicit LvStylePanel(QWidget* parent = nullptr);
    ~LvStylePanel() override;

    void setConfiguredTrack(const LvGPXConfiguredTrack& track);
    /// Without a track the panel is disabled.
    void clear();

    /// The style as it is shown.
    [[nodiscard]] LvGPXTrackConfiguration configuration() const { return myConfiguration; }

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has changed the style. With forAll it is meant for all tracks; unless the shape itself was
    /// chosen, its track shape is unknown then: every track keeps its own.
    void configurationEdited(const LvGPXTrackConfiguration& configuration, bool forAll);

protected:
    void changeEvent(QEvent* event) override;

private:
    /// Changes the configuration; returns whether it is another one now.
    using Change = std::function<bool(LvGPXTrackConfiguration& configuration)>;

    void addShapeRows(QFormLayout* layout);
    void addLineRows(QFormLayout* layout);
    void addAreaRows(QFormLayout* layout);
    void addSmoothingRows(QFormLayout* layout);
    void fillPenStyles();
    void edit(const Change& change, bool isShape = false);
    void setDisplayOption(LvGPXTrackDisplayOptionsEnum option, bool on);
    void chooseShape(int row);
    void makeDefault();
    void showConfiguration();
    void updateDependents();

    LvGPXTrackConfiguration myConfiguration;
    LvGPXTrackShape myEffectiveShape;
    bool myIsShowing = false; // while the editors are being set

    LvGPXFullShapeListModel* myShapes;
    QComboBox* myShape = nullptr;
    QCheckBox* myStroke = nullptr;
    LvColorButton* myLineColor = nullptr;
    QDoubleSpinBox* myLineWidth = nullptr;
    QComboBox* myPenStyle = nullptr;
    QDoubleSpinBox* myHaloWidth = nullptr;
    QCheckBox* myFill = nullptr;
    LvColorButton* myFillColor = nullptr;
    QSpinBox* mySmoothing = nullptr;
    QSpinBox* mySmoothingSteps = nullptr;
    QLabel* myInvisibleHint = nullptr;
    QCheckBox* myForAll = nullptr;
    QPushButton* myMakeDefault = nullptr;
};
