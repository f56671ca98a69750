#include "LvPreferencesDocuments.h"

#include "LvEditorSettings.h"

#include <QRadioButton>
#include <QVBoxLayout>

namespace
{

constexpr int documentPreferencesType = 1;

} // namespace

LvPreferencesDocuments::LvPreferencesDocuments(QWidget* parent)
    : LvPreferencesBox(tr("Speichern"), documentPreferencesType, parent)
    , myInline(new QRadioButton(tr("Die Spuren stehen &im Dokument."), this))
    , mySeparateFiles(new QRadioButton(tr("Jede Spur hat eine &eigene Datei neben dem Dokument."), this))
{
    setObjectName(QStringLiteral("DocumentsGroupBox"));
    myInline->setObjectName(QStringLiteral("inline"));
    myInline->setToolTip(tr("Ein Dokument ist eine einzige Datei, die man leicht weitergeben kann."));
    mySeparateFiles->setObjectName(QStringLiteral("separateFiles"));
    mySeparateFiles->setToolTip(tr("Unveränderte Spuren werden nicht noch einmal geschrieben."));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(myInline);
    layout->addWidget(mySeparateFiles);
    myInline->setChecked(true); // one of the two, also before the settings are read
}

LvPreferencesDocuments::~LvPreferencesDocuments() = default;

void LvPreferencesDocuments::readFromConfig()
{
    const bool isInline =
        LvEditorSettings::instance()->trackStorage() == LvTrackDocumentFile::TrackStorage::Inline;
    (isInline ? myInline : mySeparateFiles)->setChecked(true);
}

void LvPreferencesDocuments::writeToConfig()
{
    LvEditorSettings::instance()->setTrackStorage(myInline->isChecked()
                                                      ? LvTrackDocumentFile::TrackStorage::Inline
                                                      : LvTrackDocumentFile::TrackStorage::SeparateFiles);
}
