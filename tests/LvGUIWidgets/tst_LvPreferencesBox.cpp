#include "LvPreferencesBox.h"
#include "LvTest.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace
{

bool storedValue = false;

/// A page with one setting.
class Page : public LvPreferencesBox
{
public:
    explicit Page(QWidget* parent = nullptr)
        : LvPreferencesBox("Seite", 3, parent)
        , myEditor(new QCheckBox(this))
    {
        (new QVBoxLayout(this))->addWidget(myEditor);
    }

    void readFromConfig() override { myEditor->setChecked(storedValue); }

    void writeToConfig() override { storedValue = myEditor->isChecked(); }

    QCheckBox* editor() { return myEditor; }

private:
    QCheckBox* myEditor;
};

} // namespace

class tst_LvPreferencesBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void titleTypeAndParent();
    void isItem();
    void defaults();
    void readWriteRevert();
    void revertThroughTheItem();
};

void tst_LvPreferencesBox::titleTypeAndParent()
{
    QWidget parent;
    const LvPreferencesBox box("Landkarten", 7, &parent);
    QCOMPARE(box.title(), QString("Landkarten"));
    QCOMPARE(box.preferencesType(), 7);
    QCOMPARE(box.parentWidget(), &parent);
    QVERIFY(!box.isCheckable());
    QCOMPARE(LvPreferencesBox("Landkarten", 0).parentWidget(), nullptr);
    QCOMPARE(box.metaObject()->superClass(), &QGroupBox::staticMetaObject);
}

void tst_LvPreferencesBox::isItem()
{
    LvPreferencesBox box("Landkarten", 7, nullptr);
    const LvPreferencesItem& item = box;
    QCOMPARE(item.preferencesType(), 7);
    QCOMPARE(dynamic_cast<const QWidget*>(&item), &box);
}

void tst_LvPreferencesBox::defaults()
{
    LvPreferencesBox box("Landkarten", 0, nullptr);
    box.readFromConfig();
    box.writeToConfig();
    box.revertChanges();
    QCOMPARE(box.title(), QString("Landkarten"));
    QVERIFY(box.checkLeaveCondition());
}

void tst_LvPreferencesBox::readWriteRevert()
{
    storedValue = true;
    Page page;
    page.readFromConfig();
    QVERIFY(page.editor()->isChecked());
    page.editor()->setChecked(false);
    QVERIFY(storedValue);
    page.revertChanges();
    QVERIFY(page.editor()->isChecked());
    page.editor()->setChecked(false);
    page.writeToConfig();
    QVERIFY(!storedValue);
    page.revertChanges();
    QVERIFY(!page.editor()->isChecked());
}

void tst_LvPreferencesBox::revertThroughTheItem()
{
    storedValue = true;
    Page page;
    LvPreferencesItem& item = page;
    item.readFromConfig();
    page.editor()->setChecked(false);
    item.revertChanges();
    QVERIFY(page.editor()->isChecked());
    QVERIFY(item.checkLeaveCondition());
    QCOMPARE(item.preferencesType(), 3);
}

LV_TEST_MAIN(tst_LvPreferencesBox)
#include "tst_LvPreferencesBox.moc"
