#pragma once

#include "LvPreferencesBox.h"

class QRadioButton;

/// The preferences page of how documents are stored.
class LvPreferencesDocuments : public LvPreferencesBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvPreferencesDocuments)

public:
    explicit LvPreferencesDocuments(QWidget* parent = nullptr);
    ~LvPreferencesDocuments() override;

    void readFromConfig() override;
    void writeToConfig() override;

private:
    QRadioButton* myInline;
    QRadioButton* mySeparateFiles;
};
