#include "LvBeelineDialog.h"

#include "LvGPXBeelineCreator.h"
#include "LvMeasureText.h"
#include "LvPlaceEdit.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

LvBeelineDialog::LvBeelineDialog(QWidget* parent)
    : QDialog(parent)
    , myPlaces{new LvPlaceEdit(tr("Von"), this), new LvPlaceEdit(tr("Nach"), this)}
    , myName(new QLineEdit(this))
    , mySummary(new QLabel(this))
    , myButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Fluglinie"));
    myPlaces[Start]->setObjectName(QStringLiteral("start"));
    myPlaces[End]->setObjectName(QStringLiteral("end"));
    myName->setObjectName(QStringLiteral("name"));
    myName->setAccessibleName(tr("Name der Fluglinie"));
    mySummary->setObjectName(QStringLiteral("summary"));
    mySummary->setWordWrap(true);
    mySummary->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    myButtons->button(QDialogButtonBox::Ok)->setText(tr("Hinzufügen"));

    auto* places = new QHBoxLayout;
    for (int place = Start; place <= End; ++place) {
        auto* edit = myPlaces.at(static_cast<std::size_t>(place));
        places->addWidget(edit);
        connect(edit, &LvPlaceEdit::positionChanged, this, &LvBeelineDialog::onPlaceChanged);
        connect(edit, &LvPlaceEdit::pickRequested, this, [this, place] {
            myPickedPlace = place;
            Q_EMIT pickRequested(place);
        });
    }
    auto* form = new QFormLayout;
    form->addRow(tr("&Name:"), myName);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(places);
    layout->addLayout(form);
    layout->addWidget(mySummary);
    layout->addStretch(1);
    layout->addWidget(myButtons);
    connect(myButtons, &QDialogButtonBox::accepted, this, &LvBeelineDialog::accept);
    connect(myButtons, &QDialogButtonBox::rejected, this, &LvBeelineDialog::reject);
    onPlaceChanged();
}

LvBeelineDialog::~LvBeelineDialog() = default;

void LvBeelineDialog::setPlace(int place, const LvGeoPosition& position)
{
    if (place == Start || place == End) {
        myPlaces.at(static_cast<std::size_t>(place))->setPosition(position);
    }
}

LvGPXTrack LvBeelineDialog::beeline() const
{
    if (!isComplete()) {
        return {};
    }
    const QString name = myName->text().trimmed();
    return LvGPXBeelineCreator(myPlaces[Start]->position(), myPlaces[End]->position())
        .createBeeline(name.isEmpty() ? suggestedName() : name);
}

void LvBeelineDialog::accept()
{
    if (isComplete()) {
        QDialog::accept();
    }
}

void LvBeelineDialog::setPicked(const LvGeoPosition& position)
{
    if (position.isValid()) {
        // A map may show further copies of the world.
        setPlace(myPickedPlace, position.normalized());
    }
}

void LvBeelineDialog::onPlaceChanged()
{
    mySummary->setText(summary());
    myButtons->button(QDialogButtonBox::Ok)->setEnabled(isComplete());
    if (!myName->isModified()) {
        myName->setText(suggestedName());
    }
}

bool LvBeelineDialog::isComplete() const
{
    const LvGeoPosition start = myPlaces[Start]->position();
    const LvGeoPosition end = myPlaces[End]->position();
    return start.isValid() && end.isValid() && start != end;
}

QString LvBeelineDialog::summary() const
{
    const LvGeoPosition start = myPlaces[Start]->position();
    const LvGeoPosition end = myPlaces[End]->position();
    if (!start.isValid() || !end.isValid()) {
        return tr("Eine Fluglinie braucht zwei Orte.");
    }
    if (start == end) {
        return tr("Beide Orte sind derselbe.");
    }
    const auto points = static_cast<int>(LvGPXBeelineCreator(start, end).createIntermediatePoints().size());
    return tr("Entfernung: %1, dazwischen %n Punkte.", nullptr, points)
        .arg(LvMeasureText::distance(start.distance(end)));
}

QString LvBeelineDialog::suggestedName() const
{
    const QString start = myPlaces[Start]->placeName();
    const QString end = myPlaces[End]->placeName();
    return start.isEmpty() || end.isEmpty() ? tr("Fluglinie") : tr("%1 – %2", "start, end").arg(start, end);
}
