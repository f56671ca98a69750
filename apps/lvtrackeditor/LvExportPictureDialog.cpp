#include "LvExportPictureDialog.h"

#include "LvMapPicture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int smallestSide = 16;
constexpr double smallestFactor = 0.1;
constexpr double largestFactor = 20.0;
constexpr int usualEnlargement = 2; // of what the screen shows: sharp on paper and on dense screens
constexpr int fileNameCharacters = 40;

/// The names of a format, the usual suffix first.
QStringList suffixesOf(const QComboBox& format)
{
    return format.currentData().toStringList();
}

} // namespace

LvExportPictureDialog::LvExportPictureDialog(const LvPictureExporter& exporter, QWidget* parent)
    : QDialog(parent)
    , myExporter(exporter)
    , myRatio(static_cast<double>(exporter.shownSize().width()) / exporter.shownSize().height())
    , myFileName(new QLineEdit(this))
    , myFormat(new QComboBox(this))
    , myExtent(new QComboBox(this))
    , myWidth(new QSpinBox(this))
    , myHeight(new QSpinBox(this))
    , myKeepsRatio(new QCheckBox(tr("&Seitenverhältnis beibehalten"), this))
    , myPaintFactor(new QDoubleSpinBox(this))
    , myScaleBar(new QCheckBox(tr("&Maßstabsleiste zeichnen"), this))
    , myMessage(new QLabel(this))
    , myProgress(new QProgressBar(this))
    , myButtons(new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this))
    , myFields(new QWidget(this))
{
    setWindowTitle(tr("Bild der Karte speichern"));
    myMessage->setWordWrap(true);
    myMessage->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    myMessage->setObjectName(QStringLiteral("message"));
    myProgress->setRange(0, 0);
    myProgress->setAccessibleName(tr("Das Bild wird gezeichnet"));
    myButtons->button(QDialogButtonBox::Save)->setText(tr("Speichern"));
    myButtons->button(QDialogButtonBox::Cancel)->setText(tr("Abbrechen"));

    auto* form = new QFormLayout(myFields);
    form->setContentsMargins({});
    buildForm(form);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(myFields);
    layout->addWidget(myMessage);
    layout->addWidget(myProgress);
    layout->addStretch(1);
    layout->addWidget(myButtons);
    connectFields();
    setFileName(tr("Karte") + QStringLiteral(".png"));
    setBusy(false);
    myMessage->hide();
}

LvExportPictureDialog::~LvExportPictureDialog()
{
    myPool.waitForDone(); // the worker refers to this object
}

void LvExportPictureDialog::setFileName(const QString& fileName)
{
    myFileName->setText(QDir::toNativeSeparators(fileName));
    adoptSuffix();
}

QString LvExportPictureDialog::fileName() const
{
    QString name = QDir::fromNativeSeparators(myFileName->text().trimmed());
    const QStringList suffixes = suffixesOf(*myFormat);
    if (name.isEmpty() || suffixes.contains(QFileInfo(name).suffix().toLower())) {
        return name;
    }
    return QStringLiteral("%1.%2").arg(name, suffixes.first());
}

LvPictureOptions LvExportPictureDialog::options() const
{
    LvPictureOptions options;
    options.size = QSize(myWidth->value(), myHeight->value());
    options.paintFactor = myPaintFactor->value();
    options.extent = static_cast<LvPictureOptions::Extent>(myExtent->currentData().toInt());
    options.hasScaleBar = myScaleBar->isChecked();
    return options;
}

void LvExportPictureDialog::accept()
{
    if (myIsBusy) {
        return;
    }
    const QString name = fileName();
    if (name.isEmpty()) {
        finish(tr("Das Bild braucht einen Dateinamen."));
        myFileName->setFocus();
        return;
    }
    if (!mayOverwrite()) {
        return;
    }
    myMessage->hide();
    setBusy(true);
    myPool.start([this, exporter = myExporter, name, chosen = options()] {
        const QString errorText = exporter.save(name, chosen);
        QMetaObject::invokeMethod(
            this, [this, errorText] { finish(errorText); }, Qt::QueuedConnection);
    });
}

void LvExportPictureDialog::reject()
{
    if (!myIsBusy) {
        QDialog::reject();
    }
}

void LvExportPictureDialog::buildForm(QFormLayout* form)
{
    myFileName->setObjectName(QStringLiteral("fileName"));
    myFileName->setAccessibleName(tr("Dateiname"));
    myFileName->setMinimumWidth(fontMetrics().averageCharWidth() * fileNameCharacters);
    auto* browseButton = new QPushButton(tr("&Auswählen…"), this);
    browseButton->setObjectName(QStringLiteral("browse"));
    browseButton->setAccessibleName(tr("Datei auswählen"));
    browseButton->setAutoDefault(false);
    connect(browseButton, &QPushButton::clicked, this, &LvExportPictureDialog::browse);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(myFileName, 1);
    fileRow->addWidget(browseButton);
    auto* fileLabel = new QLabel(tr("&Datei:"), this);
    fileLabel->setBuddy(myFileName);
    form->addRow(fileLabel, fileRow);

    myFormat->setObjectName(QStringLiteral("format"));
    myFormat->setAccessibleName(tr("Format"));
    myFormat->addItem(tr("PNG-Bild (verlustfrei)"), QStringList{"png"});
    myFormat->addItem(tr("JPEG-Bild (klein)"), QStringList{"jpg", "jpeg"});
    myFormat->addItem(tr("SVG-Zeichnung"), QStringList{"svg"});
    myFormat->addItem(tr("PDF-Dokument"), QStringList{"pdf"});
    form->addRow(tr("&Format:"), myFormat);

    myExtent->setObjectName(QStringLiteral("extent"));
    myExtent->setAccessibleName(tr("Ausschnitt"));
    myExtent->addItem(tr("Wie auf der Karte"), static_cast<int>(LvPictureOptions::Extent::Shown));
    if (myExporter.hasTracks()) {
        myExtent->addItem(tr("Alle gezeigten Spuren"), static_cast<int>(LvPictureOptions::Extent::AllTracks));
    }
    form->addRow(tr("A&usschnitt:"), myExtent);

    const QSize size = myExporter.shownSize() * usualEnlargement;
    for (QSpinBox* side : {myWidth, myHeight}) {
        side->setRange(smallestSide, largestSide);
        side->setSuffix(tr(" Pixel"));
        side->setAccelerated(true);
    }
    myWidth->setObjectName(QStringLiteral("width"));
    myWidth->setAccessibleName(tr("Breite"));
    myWidth->setValue(size.width());
    myHeight->setObjectName(QStringLiteral("height"));
    myHeight->setAccessibleName(tr("Höhe"));
    myHeight->setValue(size.height());
    form->addRow(tr("&Breite:"), myWidth);
    form->addRow(tr("&Höhe:"), myHeight);
    myKeepsRatio->setObjectName(QStringLiteral("keepsRatio"));
    myKeepsRatio->setChecked(true);
    form->addRow(QString(), myKeepsRatio);

    myPaintFactor->setObjectName(QStringLiteral("paintFactor"));
    myPaintFactor->setAccessibleName(tr("Vergrößerung der Linien und Schriften"));
    myPaintFactor->setToolTip(
        tr("So viel größer als auf dem Bildschirm werden Linien und Schriften gezeichnet."));
    myPaintFactor->setRange(smallestFactor, largestFactor);
    myPaintFactor->setSingleStep(smallestFactor);
    myPaintFactor->setSuffix(tr("-fach"));
    myPaintFactor->setValue(usualEnlargement);
    form->addRow(tr("&Linien und Schriften:"), myPaintFactor);
    myScaleBar->setObjectName(QStringLiteral("scaleBar"));
    myScaleBar->setChecked(true);
    form->addRow(QString(), myScaleBar);
}

void LvExportPictureDialog::connectFields()
{
    connect(myButtons, &QDialogButtonBox::accepted, this, &LvExportPictureDialog::accept);
    connect(myButtons, &QDialogButtonBox::rejected, this, &LvExportPictureDialog::reject);
    connect(myFileName, &QLineEdit::textEdited, this, &LvExportPictureDialog::adoptSuffix);
    connect(myFormat, &QComboBox::activated, this, [this] {
        const QFileInfo file(QDir::fromNativeSeparators(myFileName->text().trimmed()));
        if (LvMapPicture::supportedSuffixes().contains(file.suffix().toLower())) {
            const QString stem = file.filePath().chopped(file.suffix().size());
            myFileName->setText(QDir::toNativeSeparators(stem + suffixesOf(*myFormat).constFirst()));
        }
    });
    connect(myWidth, &QSpinBox::valueChanged, this, [this] { keepRatio(myWidth); });
    connect(myHeight, &QSpinBox::valueChanged, this, [this] { keepRatio(myHeight); });
    connect(myKeepsRatio, &QCheckBox::toggled, this, [this](bool isKept) {
        if (isKept) {
            myRatio = static_cast<double>(myWidth->value()) / myHeight->value();
        }
    });
}

void LvExportPictureDialog::browse()
{
    QStringList filters;
    for (int i = 0; i < myFormat->count(); ++i) {
        const QStringList patterns =
            myFormat->itemData(i).toStringList().replaceInStrings(QRegularExpression("^"), "*.");
        filters.append(QStringLiteral("%1 (%2)").arg(myFormat->itemText(i).section(QLatin1String(" ("), 0, 0),
                                                     patterns.join(QLatin1Char(' '))));
    }
    QString filter = filters.at(myFormat->currentIndex());
    const QString name = QFileDialog::getSaveFileName(this, windowTitle(), fileName(),
                                                      filters.join(QLatin1String(";;")), &filter);
    if (name.isEmpty()) {
        return;
    }
    myFormat->setCurrentIndex(std::max<int>(static_cast<int>(filters.indexOf(filter)), 0));
    setFileName(name);
    if (fileName() == name) {
        myConfirmedName = name; // the file dialogue has asked
    }
}

void LvExportPictureDialog::adoptSuffix()
{
    const QString suffix =
        QFileInfo(QDir::fromNativeSeparators(myFileName->text().trimmed())).suffix().toLower();
    for (int i = 0; i < myFormat->count(); ++i) {
        if (myFormat->itemData(i).toStringList().contains(suffix)) {
            myFormat->setCurrentIndex(i);
        }
    }
}

void LvExportPictureDialog::keepRatio(const QSpinBox* changed)
{
    if (!myKeepsRatio->isChecked()) {
        return;
    }
    QSpinBox* other = changed == myWidth ? myHeight : myWidth;
    const QSignalBlocker blocker(other);
    const double side = changed == myWidth ? myWidth->value() / myRatio : myHeight->value() * myRatio;
    other->setValue(static_cast<int>(std::lround(std::min<double>(side, largestSide))));
}

void LvExportPictureDialog::setBusy(bool isBusy)
{
    myIsBusy = isBusy;
    myProgress->setVisible(isBusy);
    myFields->setEnabled(!isBusy);
    myButtons->setEnabled(!isBusy);
}

void LvExportPictureDialog::finish(const QString& errorText)
{
    setBusy(false);
    myMessage->setText(errorText);
    myMessage->setVisible(!errorText.isEmpty());
    if (errorText.isEmpty()) {
        QDialog::accept();
    }
}

bool LvExportPictureDialog::mayOverwrite()
{
    const QString name = fileName();
    if (name == myConfirmedName || !QFileInfo::exists(name)) {
        return true;
    }
    const auto answer = QMessageBox::warning(
        this, windowTitle(),
        tr("Die Datei „%1“ gibt es schon. Soll sie ersetzt werden?").arg(QDir::toNativeSeparators(name)),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return answer == QMessageBox::Yes;
}
