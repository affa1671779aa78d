/** @file
 * Opens the port of a selection, and finds out by asking which of several inputs carries the
 * answers.
 */
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/bus/MidiPort.h"
#include "host/bus/Patience.h"
#include "ports/PortSelector.h"

#include <functional>
#include <memory>

namespace hx {

struct AnsweringPort {
    std::unique_ptr<MidiPort> port;
    QString input; /**< its name */
};

using OpenAddress = std::function<Result<std::unique_ptr<MidiPort>>(const PortAddress&)>;

/**
 * When the selection has one address alone, it is opened and nothing is sent. Else
 * "identify" is sent with each input in turn, until a product that `device` serves answers; when
 * none does, the input by which another product answered is taken.
 */
Result<AnsweringPort> openAnswering(const PortSelection& selection, DeviceInterface& device,
                                    const OpenAddress& open, const Patience& patience = {});

} // namespace hx
