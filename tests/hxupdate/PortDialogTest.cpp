// The list of ports that another port is chosen from: it follows what is plugged in and out.
#include "tests/hxupdate/WindowBench.h"

#include <QDialog>
#include <QListWidget>

using namespace hxupdate;

namespace {

const QString firstPort = QStringLiteral("alsa:Interface 20:0");
const QString secondPort = QStringLiteral("alsa:Interface 24:0");
const QString thirdPort = QStringLiteral("alsa:Interface 28:0");

class PortDialogBench : public WindowBench {
public:
    // With two ports, of which the second one is chosen.
    PortDialogBench()
    {
        ports->plug(firstPort);
        ports->plug(secondPort);
        look();
        click("otherPort");
        list = dialog<QDialog>("portDialog")->findChild<QListWidget*>("ports");
        list->setCurrentRow(1);
    }

    QStringList listed() const
    {
        QStringList texts;
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
        return texts;
    }

    QListWidget* list;
};

} // namespace

TEST(PortDialog, PortsComeAndGoWhileItIsOpen)
{
    PortDialogBench bench;
    EXPECT_EQ(bench.listed(), QStringList({firstPort, secondPort}));
    bench.ports->plug(thirdPort);
    bench.look();
    EXPECT_EQ(bench.listed(), QStringList({firstPort, secondPort, thirdPort}));
    bench.ports->unplug(firstPort);
    bench.look();
    EXPECT_EQ(bench.listed(), QStringList({secondPort, thirdPort}));
}

TEST(PortDialog, ThePortThatIsChosenStaysChosenWhereverItStands)
{
    PortDialogBench bench;
    bench.ports->unplug(firstPort);
    bench.look();
    EXPECT_EQ(bench.list->currentItem()->text(), secondPort);
    const auto product = bench.ports->plug(thirdPort);
    bench.look();
    bench.list->setCurrentRow(1);
    bench.click("ask");
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    EXPECT_EQ(bench.model->connection().product()->port, thirdPort);
    EXPECT_GT(product->messages, 0);
}

TEST(PortDialog, WithoutAPortNoneCanBeAsked)
{
    PortDialogBench bench;
    bench.ports->unplug(firstPort);
    bench.ports->unplug(secondPort);
    bench.look();
    EXPECT_EQ(bench.listed(), QStringList());
    EXPECT_FALSE(bench.button("ask")->isEnabled());
    bench.ports->plug(firstPort);
    bench.look();
    EXPECT_TRUE(bench.button("ask")->isEnabled());
    EXPECT_EQ(bench.list->currentItem()->text(), firstPort);
}

TEST(PortDialog, AListThatHasNotChangedIsNotReadOutAgain)
{
    PortDialogBench bench;
    const QListWidgetItem* before = bench.list->item(0);
    bench.look();
    EXPECT_EQ(bench.list->item(0), before);
}
