#include "LvTest.h"
#include "LvTrackSelectionFactoryAbstract.h"

#include <memory>
#include <type_traits>

namespace
{

/// What an application adds for a kind of file of its own.
class OneTrackFactory : public LvTrackSelectionFactoryAbstract
{
public:
    explicit OneTrackFactory(int& deletions)
        : myDeletions(deletions)
    {
    }

    ~OneTrackFactory() override { ++myDeletions; }

    Q_DISABLE_COPY_MOVE(OneTrackFactory)

    bool supportsFile(const QUrl& url) const override { return url.fileName() == QStringLiteral("one"); }

    QStringList supportedFileFormats() const override { return {QStringLiteral("one")}; }

    LvGPXConfiguredTrackList createConfiguredTrackList(const QUrl& url) const override
    {
        return supportsFile(url) ? LvGPXConfiguredTrackList(LvGPXConfiguredTrack())
                                 : LvGPXConfiguredTrackList();
    }

private:
    int& myDeletions;
};

} // namespace

class tst_LvTrackSelectionFactoryAbstract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAnInterface();
    void usableThroughTheBase();
};

void tst_LvTrackSelectionFactoryAbstract::isAnInterface()
{
    static_assert(std::is_abstract_v<LvTrackSelectionFactoryAbstract>);
    static_assert(std::has_virtual_destructor_v<LvTrackSelectionFactoryAbstract>);
    static_assert(!std::is_copy_constructible_v<LvTrackSelectionFactoryAbstract>);
}

void tst_LvTrackSelectionFactoryAbstract::usableThroughTheBase()
{
    int deletions = 0;
    std::unique_ptr<LvTrackSelectionFactoryAbstract> factory = std::make_unique<OneTrackFactory>(deletions);
    QVERIFY(factory->supportsFile(QUrl::fromLocalFile(QStringLiteral("/somewhere/one"))));
    QVERIFY(!factory->supportsFile(QUrl::fromLocalFile(QStringLiteral("/somewhere/two"))));
    QCOMPARE(factory->supportedFileFormats(), QStringList({QStringLiteral("one")}));
    QCOMPARE(factory->createConfiguredTrackList(QUrl::fromLocalFile(QStringLiteral("one"))).count(), 1);
    QVERIFY(!factory->createConfiguredTrackList(QUrl()).isValid());
    factory.reset();
    QCOMPARE(deletions, 1);
}

LV_TEST_MAIN(tst_LvTrackSelectionFactoryAbstract)
#include "tst_LvTrackSelectionFactoryAbstract.moc"
