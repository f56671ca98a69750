#pragma once

#include "LvPictureExporter.h"

#include <QDialog>
#include <QThreadPool>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QSpinBox;

/**
 * Asks how a picture of the map is to be made, and makes it, in a thread of its own. The dialogue closes when
 * the file is there and stays open when that failed.
 */
class LvExportPictureDialog : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvExportPictureDialog)

public:
    /// The longest side of a picture, in pixels; the painter's coordinates end a little beyond.
    static constexpr int largestSide = 30000;

    explicit LvExportPictureDialog(const LvPictureExporter& exporter, QWidget* parent = nullptr);
    /// Waits for a picture that is being made.
    ~LvExportPictureDialog() override;

    /// The file to write; its suffix chooses the format where it is a known one.
    void setFileName(const QString& fileName);

    /// The file to write, with the suffix of the format.
    [[nodiscard]] QString fileName() const;

    [[nodiscard]] LvPictureOptions options() const;

    /// Whether a picture is being made.
    [[nodiscard]] bool isBusy() const { return myIsBusy; }

    /// Makes the picture; closes the dialogue when it is there.
    void accept() override;
    /// Closes the dialogue without a picture; not while one is being made.
    void reject() override;

private:
    void buildForm(QFormLayout* form);
    void connectFields();
    void browse();
    void adoptSuffix();
    void keepRatio(const QSpinBox* changed);
    void setBusy(bool isBusy);
    void finish(const QString& errorText);
    [[nodiscard]] bool mayOverwrite();

    LvPictureExporter myExporter;
    double myRatio; // width by height, while it is kept
    QString myConfirmedName; // a file that the user agreed to replace
    QLineEdit* myFileName;
    QComboBox* myFormat;
    QComboBox* myExtent;
    QSpinBox* myWidth;
    QSpinBox* myHeight;
    QCheckBox* myKeepsRatio;
    QDoubleSpinBox* myPaintFactor;
    QCheckBox* myScaleBar;
    QLabel* myMessage;
    QProgressBar* myProgress;
    QDialogButtonBox* myButtons;
    QWidget* myFields;
    bool myIsBusy = false;
    QThreadPool myPool;
};
