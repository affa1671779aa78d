// The order of the public data members of the records and of the plugin object.
#include "plugin/ValdrinBootInterface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <initializer_list>

namespace {

bool standInThisOrder(std::initializer_list<const void*> members)
{
    return std::is_sorted(members.begin(), members.end(), std::less<>()) &&
           std::adjacent_find(members.begin(), members.end()) == members.end();
}

} // namespace

TEST(MemberOrder, ofTheUpdateDescription)
{
    const FwUpdateProtocol r;
    EXPECT_TRUE(standInThisOrder({&r.fidpid, &r.codeType, &r.responseAny, &r.responseBad,
                                  &r.responseFailed, &r.responseGood, &r.fileCheck, &r.timeoutMs}));
}

TEST(MemberOrder, ofTheIdentityRecord)
{
    const HxIdentity r;
    EXPECT_TRUE(
        standInThisOrder({&r.deviceIdOffset, &r.manufacturerIdOffset, &r.manufacturerIdLength,
                          &r.familyOffset, &r.modelOffset, &r.versionOffset, &r.tailOffset,
                          &r.reply, &r.versionNumber, &r.versionText}));
}

TEST(MemberOrder, ofThePluginAfterItsBases)
{
    const ValdrinBootInterface p;
    EXPECT_TRUE(
        standInThisOrder({static_cast<const QObject*>(&p), static_cast<const DeviceInterface*>(&p),
                          &p.hostMap, &p.protocolMap, &p.fillerText, &p.spareText, &p.identity,
                          &p.productNameText, &p.supportedGenders}));
}
