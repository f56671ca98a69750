#include "LvPreferencesMap.h"

#include "LvEditorSettings.h"
#include "LvMapSource.h"
#include "LvTileUrlTemplate.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace
{

constexpr int mapPreferencesType = 0; // that of the library's page about maps: both share a tab

constexpr QLatin1String builtInName("builtin");
constexpr QLatin1String noneName("none");

} // namespace

LvPreferencesMap::LvPreferencesMap(QWidget* parent)
    : LvPreferencesBox(tr("Hintergrundkarte"), mapPreferencesType, parent)
    , myKind(new QComboBox(this))
    , myLocationCaption(new QLabel(this))
    , myLocation(new QLineEdit(this))
    , myBrowse(new QPushButton(tr("&Durchsuchen …"), this))
    , myAttribution(new QLineEdit(this))
    , myError(new QLabel(this))
    , myLocations(KindCount, QString())
{
    setObjectName(QStringLiteral("MapGroupBox"));
    myKind->setObjectName(QStringLiteral("kind"));
    myKind->setAccessibleName(tr("Art der Karte"));
    for (const QString& name : {tr("Eingebaute Weltkarte"), tr("Keine Karte"), tr("Ordner mit Kacheln"),
                                tr("MBTiles-Datei"), tr("Kacheln aus dem Internet")}) {
        myKind->addItem(name);
    }
    myLocation->setObjectName(QStringLiteral("location"));
    myLocationCaption->setBuddy(myLocation);
    myBrowse->setObjectName(QStringLiteral("browse"));
    myBrowse->setAutoDefault(false);
    myAttribution->setObjectName(QStringLiteral("attribution"));
    myAttribution->setAccessibleName(tr("Quellenangabe der Karte"));
    myAttribution->setPlaceholderText(tr("wie in der Karte selbst angegeben"));
    myAttribution->setToolTip(
        tr("Wem die Karte gehört. Viele Anbieter verlangen, dass dies auf jedem Bild steht."));
    myError->setObjectName(QStringLiteral("error"));
    myError->setWordWrap(true);
    myError->setTextFormat(Qt::PlainText);

    auto* location = new QHBoxLayout;
    location->addWidget(myLocation, 1);
    location->addWidget(myBrowse);
    auto* layout = new QFormLayout(this);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addRow(tr("&Karte:"), myKind);
    layout->addRow(myLocationCaption, location);
    layout->addRow(tr("&Quellenangabe:"), myAttribution);
    layout->addRow(myError);

    connect(myKind, &QComboBox::activated, this, [this] {
        showKind();
        showError({});
    });
    connect(myLocation, &QLineEdit::textEdited, this, [this] { showError({}); });
    connect(myBrowse, &QPushButton::clicked, this, &LvPreferencesMap::browse);
    showKind();
    showError({});
}

LvPreferencesMap::~LvPreferencesMap() = default;

void LvPreferencesMap::readFromConfig()
{
    const LvEditorSettings* settings = LvEditorSettings::instance();
    const Kind stored = kindOf(settings->mapSource());
    myLocations.fill({});
    myLocations[stored] = stored == BuiltIn || stored == None ? QString() : settings->mapSource();
    myShownKind = stored;
    myLocation->setText(myLocations.at(stored));
    myKind->setCurrentIndex(stored);
    myAttribution->setText(settings->attribution());
    showKind();
    showError({});
}

void LvPreferencesMap::writeToConfig()
{
    LvEditorSettings* settings = LvEditorSettings::instance();
    settings->setMapSource(mapSource());
    settings->setAttribution(myAttribution->text().trimmed());
}

bool LvPreferencesMap::checkLeaveCondition()
{
    const QString error = findError();
    showError(error);
    if (!error.isEmpty()) {
        myLocation->setFocus(Qt::OtherFocusReason);
        myLocation->selectAll();
    }
    return error.isEmpty();
}

LvPreferencesMap::Kind LvPreferencesMap::kind() const
{
    return static_cast<Kind>(myKind->currentIndex());
}

QString LvPreferencesMap::mapSource() const
{
    switch (kind()) {
    case BuiltIn:
        return builtInName;
    case None:
        return noneName;
    default:
        return myLocation->text().trimmed();
    }
}

QString LvPreferencesMap::findError() const
{
    const QString source = mapSource();
    switch (kind()) {
    case Folder:
    case File: {
        if (source.isEmpty()) {
            return kind() == Folder ? tr("Es ist kein Ordner angegeben.")
                                    : tr("Es ist keine Datei angegeben.");
        }
        const QFileInfo info(source);
        if (kind() == Folder ? !info.isDir() : !info.isFile()) {
            return kind() == Folder ? tr("Den Ordner „%1“ gibt es nicht.").arg(source)
                                    : tr("Die Datei „%1“ gibt es nicht.").arg(source);
        }
        const std::unique_ptr<LvMapSource> map = LvMapSource::create(source);
        return map && !map->isValid() ? map->errorText() : QString();
    }
    case Url:
        return source.isEmpty() ? tr("Es ist keine Adresse angegeben.")
                                : LvTileUrlTemplate(source).errorText();
    default:
        return {};
    }
}

LvPreferencesMap::Kind LvPreferencesMap::kindOf(const QString& mapSource)
{
    if (mapSource == noneName) {
        return None;
    }
    if (mapSource == builtInName || mapSource.isEmpty()) {
        return BuiltIn;
    }
    if (LvTileUrlTemplate::looksLikeUrl(mapSource)) {
        return Url;
    }
    return QFileInfo(mapSource).isDir() ? Folder : File;
}

void LvPreferencesMap::showKind()
{
    myLocations[myShownKind] = myLocation->text();
    myShownKind = kind();
    myLocation->setText(myLocations.at(myShownKind));
    QString caption = tr("&Ort:");
    QString placeholder;
    if (myShownKind == Folder) {
        caption = tr("&Ordner:");
    } else if (myShownKind == File) {
        caption = tr("Datei:");
    } else if (myShownKind == Url) {
        caption = tr("&Adresse:");
        placeholder = QStringLiteral("https://…/{z}/{x}/{y}.png");
    }
    myLocationCaption->setText(caption);
    QString name = caption;
    myLocation->setAccessibleName(name.remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    myLocation->setPlaceholderText(placeholder);
    const bool hasLocation = myShownKind == Folder || myShownKind == File || myShownKind == Url;
    myLocationCaption->setEnabled(hasLocation);
    myLocation->setEnabled(hasLocation);
    myBrowse->setEnabled(myShownKind == Folder || myShownKind == File);
    myAttribution->setEnabled(myShownKind != None);
}

void LvPreferencesMap::browse()
{
    auto* dialog = new QFileDialog(
        this, kind() == Folder ? tr("Ordner mit Kacheln wählen") : tr("MBTiles-Datei wählen"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (kind() == Folder) {
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog->setFileMode(QFileDialog::ExistingFile);
        dialog->setNameFilters({tr("MBTiles-Dateien (*.mbtiles)"), tr("Alle Dateien (*)")});
    }
    if (!myLocation->text().isEmpty()) {
        dialog->selectFile(myLocation->text());
    }
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& name) {
        myLocation->setText(name);
        showError({});
    });
    dialog->open();
}

void LvPreferencesMap::showError(const QString& text)
{
    myError->setText(text);
    myError->setVisible(!text.isEmpty());
}
