// The MIDI ports of this machine.
#pragma once

#include "apps/hxupdate/model/PortSource.h"

namespace hxupdate {

class MachinePorts final : public PortSource {
public:
    QStringList list() override;
    std::unique_ptr<hx::MidiPort> open(const QString& port, QString* error) override;
};

} // namespace hxupdate
