// One scenario tried: a fresh product, an update with the fault, a second update without it.
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/update/UpdateRun.h"
#include "tests/sweep/Oracle.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace sweep {

// Of the image: two data messages, the second one short.
constexpr int codeSize = 150;

struct TrialReport {
    hx::UpdateOutcome outcome = hx::UpdateOutcome::NoAnswer;
    QString reason;         // the host's
    QString productState;   // the host's
    QStringList complaints; // what was not as it must be; empty: the scenario passed
    bool isFalseSuccess = false;
    WireRecord record; // of the first update
};

// The port that the host uses, with the link under it.
using PortOver = std::function<std::unique_ptr<hx::MidiPort>(FaultyLink&)>;

class Laboratory {
public:
    // `device` is the plugin; it must outlive this object. Without a flaw the product is sound.
    // Without `portOver` the host uses the link itself.
    explicit Laboratory(DeviceInterface& device, const Flaw* flaw = nullptr,
                        const PortOver& portOver = {});

    TrialReport tryScenario(const Scenario& scenario);

    // From now on the host has this patience.
    void setPatience(const hx::Patience& patience) { m_patience = patience; }

    // Sizes of the messages of an update without a fault, in order.
    std::vector<int> messageSizes(Direction direction);

    // What these are about, in order; the same for both directions.
    std::vector<Topic> topics();

    // Single memory writes of each message that the host sends in it.
    std::vector<int> memoryWrites();

private:
    DeviceInterface& m_device;
    const Flaw* m_flaw;
    PortOver m_portOver;
    hx::Patience m_patience;
    hx::UpdateImage m_image;
    hx::sim::SimulatedProduct m_fresh;
};

} // namespace sweep
