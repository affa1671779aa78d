// Products that break one promise each. Most are the sound product with its memory changed after a
// message, to what another order of its writes would have left there.
#include "simulator/Crc32.h"
#include "simulator/WireFormat.h"
#include "tests/sweep/FaultyLink.h"
#include "tests/sweep/ProductOnTrial.h"

namespace sweep {

namespace {

using hx::sim::SimulatedProduct;
using hx::sim::StoredCode;

constexpr int ackStatusAt = 8;
constexpr int numberAt = 8;
constexpr int numberGroups = 2;
constexpr int lengthAt = 8;
constexpr int sizeGroups = 5;
constexpr int imageChecksumAt = 13;
constexpr int sumFrom = 8;
constexpr int fullData = 112;
constexpr int cacheSize = 16;

template <typename Change>
void changeCode(SimulatedProduct& product, Change change)
{
    StoredCode code = product.code();
    change(code);
    product.setCode(code);
}

void setValid(SimulatedProduct& product, bool isValid)
{
    changeCode(product, [isValid](StoredCode& code) { code.valid = isValid; });
}

bool isFirstData(const Handled& handled)
{
    return handled.topic == Topic::Data &&
           hx::sim::readGroups(handled.message, numberAt, numberGroups) == 0;
}

bool isGood(const Handled& handled)
{
    return !handled.replies.isEmpty() && handled.replies.first().bytes.at(ackStatusAt) == '\0';
}

void answer(const Handled& handled, char status)
{
    QByteArray ack = handled.message.left(commandAt);
    ack.append(static_cast<char>(hx::sim::kindFwu)).append('\x0C').append(status).append('\xF7');
    handled.replies = {{ack, handled.product.settings().replyDelayUs}};
}

void validUntilErased(const Handled& handled)
{
    if (isFirstData(handled) && handled.powerFailed && handled.before.valid)
        setValid(handled.product, true);
}

void validWhileWriting(const Handled& handled)
{
    if (handled.topic == Topic::Data && handled.before.valid)
        setValid(handled.product, true);
}

void validBeforeSealed(const Handled& handled)
{
    if (handled.topic != Topic::Closing || !handled.powerFailed || handled.writes == 0)
        return;
    changeCode(handled.product, [&handled](StoredCode& code) {
        code.valid = true;
        code.version = handled.writes == 1 ? handled.before.version : code.version;
        code.crc = handled.before.crc;
    });
}

void validBeforeLastByte(const Handled& handled)
{
    const int written = static_cast<int>(handled.product.codeBytes().size());
    if (handled.topic == Topic::Data && !isFirstData(handled) && written > fullData)
        setValid(handled.product, true);
}

void validOnRestart(SimulatedProduct& product)
{
    setValid(product, !product.codeBytes().isEmpty());
}

void forgetsSector(const Handled& handled)
{
    if (isFirstData(handled) && isGood(handled))
        changeCode(handled.product, [&handled](StoredCode& code) {
            code.bytes.replace(64, 16, handled.fresh.codeBytes().mid(64, 16));
        });
}

void resumes(const Handled& handled)
{
    if (isFirstData(handled) && isGood(handled) && !handled.before.valid)
        changeCode(handled.product, [&handled](StoredCode& code) {
            code.bytes = handled.before.bytes + code.bytes;
        });
}

void appendsRepetition(const Handled& handled)
{
    if (handled.topic == Topic::Data && handled.isRepetition() && !isFirstData(handled))
        changeCode(handled.product,
                   [](StoredCode& code) { code.bytes += code.bytes.mid(fullData); });
}

void losesLastByte(const Handled& handled)
{
    if (handled.topic == Topic::Closing && isGood(handled) && !handled.before.valid)
        changeCode(handled.product, [](StoredCode& code) { code.bytes.chop(1); });
}

void losesCache(SimulatedProduct& product)
{
    if (product.isCodeValid())
        changeCode(product, [](StoredCode& code) {
            code.bytes.replace(code.bytes.size() - cacheSize, cacheSize,
                               QByteArray(cacheSize, '\xFF'));
        });
}

void keepsOldVersion(const Handled& handled)
{
    if (handled.topic == Topic::Closing && isGood(handled))
        changeCode(handled.product,
                   [&handled](StoredCode& code) { code.version = handled.fresh.code().version; });
}

void sealsUnchecked(const Handled& handled)
{
    const bool isHeld = handled.product.codeBytes() != handled.fresh.codeBytes();
    if (handled.topic != Topic::Closing || isGood(handled) || handled.powerFailed || !isHeld)
        return;
    setValid(handled.product, true);
    answer(handled, 0);
}

void sealsLater(const Handled& handled)
{
    if (handled.topic == Topic::Closing && isGood(handled))
        return setValid(handled.product, false);
    const bool isQuestion = handled.topic == Topic::Version || handled.topic == Topic::Identity;
    const StoredCode& code = handled.product.code();
    if (isQuestion && !code.valid && code.crc == hx::sim::productCrc32(code.bytes))
        setValid(handled.product, true);
}

void losesSeal(SimulatedProduct& product)
{
    if (!product.isCodeValid())
        changeCode(product, [](StoredCode& code) { code.crc = 0; });
}

void ofOldCode(const Handled& handled, Topic topic)
{
    if (handled.topic != topic || handled.replies.isEmpty())
        return;
    SimulatedProduct old = handled.fresh;
    handled.replies = old.receive(handled.message);
}

void storedOfOldCode(const Handled& handled)
{
    ofOldCode(handled, Topic::Stored);
}

void calculatedOfOldCode(const Handled& handled)
{
    ofOldCode(handled, Topic::Calculated);
}

void damagedEndsUpdate(const Handled& handled)
{
    if (handled.replies.isEmpty() || handled.topic == Topic::Identity ||
        handled.replies.first().bytes.at(ackStatusAt) != '\1')
        return;
    handled.product.powerCycle();
    answer(handled, 2);
}

void silentAfterClosing(const Handled& handled)
{
    const bool isNew = handled.product.codeBytes() != handled.fresh.codeBytes();
    if (handled.topic == Topic::Identity && isNew && handled.product.isCodeValid())
        handled.replies.clear();
}

void otherAfterClosing(const Handled& handled)
{
    constexpr int modelAtInIdentity = 10;
    const bool isNew = handled.product.codeBytes() != handled.fresh.codeBytes();
    if (handled.topic == Topic::Identity && isNew && !handled.replies.isEmpty())
        handled.replies.first().bytes[modelAtInIdentity] = '\x42';
}

void acknowledgesUnwritten(const Handled& handled)
{
    if (handled.topic == Topic::Data && !isFirstData(handled) && isGood(handled))
        handled.product.setCode(handled.before);
}

// Says yes to any file check: the length and the checksum that it states become those of the memory.
void takesAnyFileCheck(SimulatedProduct& product, QByteArray& message, Topic topic)
{
    if (topic != Topic::Check || message.size() < imageChecksumAt + sizeGroups + 2)
        return;
    const QByteArray& held = product.codeBytes();
    message.replace(lengthAt, sizeGroups,
                    hx::sim::writeGroups(static_cast<quint64>(held.size()), sizeGroups));
    message.replace(imageChecksumAt, sizeGroups,
                    hx::sim::writeGroups(hx::sim::productCrc32(held), sizeGroups));
    const int sumAt = static_cast<int>(message.size()) - 2;
    message[sumAt] = static_cast<char>(hx::sim::sum7(message, sumFrom, sumAt));
}

Flaw flawAfter(const char* name, const char* what, const char* scenario,
               void (*after)(const Handled&))
{
    Flaw flaw;
    flaw.name = name;
    flaw.what = what;
    flaw.scenario = scenario;
    flaw.after = after;
    return flaw;
}

Flaw flawAtRestart(const char* name, const char* what, const char* scenario,
                   void (*restarted)(SimulatedProduct&))
{
    Flaw flaw = flawAfter(name, what, scenario, nullptr);
    flaw.restarted = restarted;
    return flaw;
}

Flaw flawThat(const char* name, const char* what, const char* scenario, bool Flaw::*does)
{
    Flaw flaw = flawAfter(name, what, scenario, nullptr);
    flaw.*does = true;
    return flaw;
}

Flaw flawBefore(const char* name, const char* what, const char* scenario,
                void (*before)(SimulatedProduct&, QByteArray&, Topic))
{
    Flaw flaw = flawAfter(name, what, scenario, nullptr);
    flaw.before = before;
    return flaw;
}

Flaw sealingLater()
{
    Flaw flaw = flawAfter("seals-later", "acknowledges the closing and writes the mark later",
                          "in 6.10 power-off x1", sealsLater);
    flaw.restarted = losesSeal;
    return flaw;
}

} // namespace

const std::vector<Flaw>& allFlaws()
{
    static const std::vector<Flaw> flaws = {
        flawAfter("valid-until-erased", "erases first, then clears the valid mark",
                  "out 3.0 power-cut 2 x*", validUntilErased),
        flawAfter("valid-while-writing", "does not clear the valid mark before the closing",
                  "out 4.0 power-cut 3 x1", validWhileWriting),
        flawAfter("valid-before-sealed", "writes the valid mark before version and checksum",
                  "out 6.0 power-cut 1 x1", validBeforeSealed),
        flawAfter("valid-before-last-byte", "marks valid while the last data is written",
                  "out 4.0 power-cut 9 x1", validBeforeLastByte),
        flawAtRestart("valid-on-restart", "marks valid what it finds when it starts",
                      "out 4.20 power-off x1", validOnRestart),
        flawAtRestart("loses-cache", "loses its last bytes when power fails after the closing",
                      "out 7.0 power-off x1", losesCache),
        flawThat("acknowledges-first", "acknowledges before it writes", "out 4.0 power-cut 9 x1",
                 &Flaw::answersFirst),
        sealingLater(),
        flawAfter("acknowledges-unwritten", "acknowledges data that it does not write",
                  "out 1.0 none x1", acknowledgesUnwritten),
        flawAfter("forgets-a-sector", "does not write a part of the code", "out 1.0 none x1",
                  forgetsSector),
        flawAfter("resumes", "does not erase when an update broke off before",
                  "out 4.0 power-cut 9 x1", resumes),
        flawAfter("loses-last-byte", "does not write the last byte of the code", "out 1.0 none x1",
                  losesLastByte),
        flawBefore("takes-any-file-check", "does not compare the file check with its memory",
                   "out 3.17 flip 40 x1 + out 3.18 flip 40 x1", takesAnyFileCheck),
        flawAfter("seals-unchecked", "takes the closing without a good file check",
                  "out 5.0 answer 00 x1", sealsUnchecked),
        flawThat("knows-no-repetition", "refuses a message that comes again",
                 "in 4.0 delay 2200001 x1", &Flaw::knowsNoRepetition),
        flawAfter("appends-repetition", "writes a message that comes again after itself",
                  "in 4.0 delay 2200001 x1", appendsRepetition),
        flawAfter("damaged-ends-update", "ends the update at a damaged message", "out 4.20 drop x1",
                  damagedEndsUpdate),
        flawAfter("keeps-old-version", "reports the version of the code before", "out 1.0 none x1",
                  keepsOldVersion),
        flawAfter("stored-of-old-code", "reports the stored checksum of the code before",
                  "out 1.0 none x1", storedOfOldCode),
        flawAfter("calculated-of-old-code", "reports the calculated checksum of the code before",
                  "out 1.0 none x1", calculatedOfOldCode),
        flawAfter("silent-after-closing", "does not answer once it is updated", "out 1.0 none x1",
                  silentAfterClosing),
        flawAfter("other-after-closing", "answers as another model once it is updated",
                  "out 1.0 none x1", otherAfterClosing),
    };
    return flaws;
}

} // namespace sweep
