// The identity exchange and the reading of its reply.
#include "plugin/Identification.h"

#include "plugin/ValdrinBootInterface.h"

namespace {

constexpr unsigned identityTimeoutMs = 25000;

unsigned char byteAt(HxMidiData const& data, int position)
{
    return static_cast<unsigned char>(data.bytes.at(position));
}

bool isAcceptedReply(HxMidiData const& reply)
{
    return reply.bytes.size() >= 16 && reply.contains("00 6B 2D") &&
           reply.contains("F0 7E .. 06 02");
}

int decimalDigit(unsigned char character)
{
    return character >= '0' && character <= '9' ? character - '0' : 0;
}

HxIdentity parsedReply(HxMidiData const& reply, HxIdentityCtrl ctrl)
{
    HxIdentity identity;
    identity.reply = reply;
    if (byteAt(reply, identity.manufacturerIdOffset) == 0) {
        identity.manufacturerIdLength = 3;
        identity.familyOffset += 2;
        identity.modelOffset += 2;
        identity.versionOffset += 2;
    }
    for (int i = 0; i < 4; ++i) {
        const bool blanked = i == 0 && ctrl.value != 0;
        const unsigned char character = blanked ? 0 : byteAt(reply, identity.versionOffset + i);
        if (i > 0)
            identity.versionText += QLatin1Char('.');
        identity.versionText += QLatin1Char(static_cast<char>(character));
        identity.versionNumber = identity.versionNumber * 10 + decimalDigit(character);
    }
    return identity;
}

} // namespace

bool HxIdentity::init(HxMidiData const& newReply, HxIdentityCtrl ctrl)
{
    const bool accepted = isAcceptedReply(newReply);
    *this = accepted ? parsedReply(newReply, ctrl) : HxIdentity();
    return accepted;
}

void ValdrinBootInterface::doMidiIdent()
{
    Q_ASSERT(bus);
    const BusData request("F0 7E 7F 06 01 F7");
    const ResponceData expected("F0 7E .. 06 02 00 6B 2D 30 00 41 00 .. .. .. .. F7");
    const BusData reply = bus->transactExpect(request, expected, identityTimeoutMs);
    if (!reply.bytes.isEmpty())
        identity.init(reply, 0);
}
