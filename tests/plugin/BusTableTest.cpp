// The order of the bus's virtual table and of its members, which plugins built earlier rely on.
#include "tests/plugin/FrozenTable.h"
#include "tests/support/FakeBus.h"

#include <gtest/gtest.h>

// At file scope: of a class in an unnamed namespace the optimiser sees that nobody implements it.
//
// The bus as plugins in the field were compiled with it, written down a second time on purpose:
// this copy never changes.
class FrozenBus {
public:
    virtual ~FrozenBus() = default;
    virtual BusData transact(BusData command, QString responsePattern, unsigned timeoutMs) = 0;
    virtual BusData transactExpect(BusData const& command, ResponceData const& expected,
                                   unsigned timeoutMs) = 0;
    QString errorText;
};

namespace {

CALLS_THROUGH_FROZEN_TABLE void callBoth(FrozenBus* bus)
{
    bus->transact(HxMidiData("01"), QStringLiteral("a"), 1);
    bus->transactExpect(HxMidiData("02"), ResponceData("b"), 2);
    bus->errorText = QStringLiteral("through the frozen bus");
}

} // namespace

TEST(BusTable, transactStandsBeforeTransactExpectAndTheErrorTextFollows)
{
    FakeBus bus;
    callBoth(throughFrozenTable<FrozenBus>(static_cast<Bus*>(&bus)));
    ASSERT_EQ(bus.exchanges.size(), 2);
    EXPECT_EQ(bus.exchanges[0].command.bytes, QByteArray("\x01"));
    EXPECT_FALSE(bus.exchanges[0].compiled);
    EXPECT_EQ(bus.exchanges[1].command.bytes, QByteArray("\x02"));
    EXPECT_TRUE(bus.exchanges[1].compiled);
    EXPECT_EQ(bus.errorText, QStringLiteral("through the frozen bus"));
}
