#include "ports/WaysBack.h"

#include "ports/PortMemory.h"

#include <algorithm>

namespace hx {

ReturningPort::Ways waysBackTo(const PortAddress& address, const QList<MidiBackend>& present,
                               const ListBackends& list, const OpenAddress& open)
{
    const PortMemory memory(address, present);
    const auto reopen = [memory, list, open]() -> Result<std::unique_ptr<MidiPort>> {
        const Result<PortAddress> found = memory.find(list());
        if (!found)
            return found.problem();
        return open(*found);
    };
    const auto isServed = [list, backend = address.backend] {
        const QList<MidiBackend> backends = list();
        return std::any_of(backends.begin(), backends.end(), [&backend](const MidiBackend& one) {
            return one.name == backend && one.unavailable.isEmpty();
        });
    };
    return {reopen, isServed, nullptr};
}

} // namespace hx
