// What a person is told when a run did not succeed: what happened, in a musician's words, then the
// detail, then what to do. Bytes of messages are left to the trace.
#pragma once

#include "host/base/Problem.h"

#include "host/image/UpdateImage.h"
#include "host/update/UpdateResult.h"

namespace hx::host {

// The end of an update, or of a verification, that did not succeed. `image` is null where none was
// given.
Problem problemOf(const UpdateResult& result, const UpdateImage* image, const QString& portName);

// A question to which no usable answer came.
Problem problemOf(const Reading& reading, const QString& portName);

// A product whose code is not shown to be intact.
Problem problemOf(const ProductAssessment& assessment, const QString& portName);

// "Valdrin, serial number 30410001"; the name alone where the number could not be read.
QString productText(const QString& productName, const EsnReading& esn);

// The serial number as text where all of it is text, else empty.
QString serialText(const QByteArray& number);

} // namespace hx::host
