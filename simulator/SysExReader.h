/** @file
 * Cuts the bytes that reach the product into whole SysEx messages, however they arrive.
 */
#pragma once

#include <QByteArray>
#include <QVector>

namespace hx::sim {

/**
 * Real-time bytes (F8 to FF) are skipped wherever they stand, any other status byte ends an
 * unfinished message, and bytes outside of a message are skipped. A message longer than `maxLength`
 * is dropped whole, so that what is held between calls stays bounded.
 */
class SysExReader {
public:
    static constexpr int maxLength = 512;

    /** The messages, F0 to F7, that are complete with these bytes, in order. */
    QVector<QByteArray> take(const QByteArray& bytes);

    /** Forgets an unfinished message. */
    void clear() { m_message.clear(); }

    /** Bytes of the unfinished message, at most `maxLength`. */
    int pending() const;

private:
    void takeData(char byte);

    QByteArray m_message;
};

} // namespace hx::sim
