#pragma once

#include <QScrollArea>
#include <QString>

class LvGPXConfiguredTrack;
class LvTrackStatistics;
class QFormLayout;
class QLabel;
class QLineEdit;

/**
 * Tells what there is to know about one track, as texts that can be selected, and lets its name be edited.
 */
class LvTrackDetailsPanel : public QScrollArea
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackDetailsPanel)

public:
    explicit LvTrackDetailsPanel(QWidget* parent = nullptr);
    ~LvTrackDetailsPanel() override;

    void setTrack(const LvGPXConfiguredTrack& track);
    /// As setTrack(), for a caller that has the statistics of the track already.
    void setTrack(const LvGPXConfiguredTrack& track, const LvTrackStatistics& statistics);
    /// Without a track the panel is disabled.
    void clear();

    /// Puts the input focus on the name with everything selected.
    void editName();

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has given the track another name. The panel shows the new name until a track is set again.
    void nameEdited(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static QLabel* addRow(QFormLayout* layout, const QString& caption, const QString& objectName);
    void onNameFinished();

    QString myShownName;
    QLineEdit* myName;
    QLabel* myDescription;
    QLabel* myShape;
    QLabel* myPoints;
    QLabel* myLength;
    QLabel* myStart;
    QLabel* myEnd;
    QLabel* myDuration;
    QLabel* myMovingTime;
    QLabel* myMeanSpeed;
    QLabel* myMovingSpeed;
    QLabel* myHighestSpeed;
    QLabel* myAscent;
    QLabel* myDescent;
    QLabel* myElevations;
    QLabel* mySouthWest;
    QLabel* myNorthEast;
};
