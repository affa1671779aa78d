// Update messages, and a product to send them to, written out for the tests.
#pragma once

#include "simulator/SimulatedProduct.h"

namespace hx::sim {

QByteArray bytesOf(const char* hex);
QByteArray hexOf(const QByteArray& bytes);

// A number of 7-bit groups, most significant first.
QByteArray groups(quint64 value, int count);

// F0 00 6B 2D 30 41, then `fields` and their sum, then F7. The sum begins behind kind and command.
QByteArray withSum(const QByteArray& kindAndCommand, const QByteArray& fields);

QByteArray dataMessage(int number, quint64 address, const QByteArray& code, quint8 kind = kindFwu);
QByteArray fileCheck(const QByteArray& code, const QByteArray& version, quint8 kind = kindFwu);
QByteArray closing();

// A whole image.
QVector<QByteArray> imageOf(const QByteArray& code, const QByteArray& version,
                            quint8 kind = kindFwu);

// `size` bytes that look like code: every value occurs, runs differ.
QByteArray codeOfSize(int size);

// The replies to `bytes`, in hex, separated by " | ".
QByteArray answers(SimulatedProduct& product, const QByteArray& bytes);
QByteArray answers(SimulatedProduct& product, const char* hex);

} // namespace hx::sim
