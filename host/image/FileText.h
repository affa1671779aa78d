// The text of a file, character by character, in the encodings that editors save it in.
#pragma once

#include <QByteArray>

namespace hx {

// ASCII and UTF-8, with a byte-order mark or without; UTF-16 of either order, told by its mark or
// by a zero byte in its first character. The content must outlive it.
class FileText {
public:
    explicit FileText(const QByteArray& content);

    int size() const;

    // The character; byte FF for one that is not ASCII and for half of one at the end.
    char at(int index) const;

    // Where it begins in the file.
    qint64 offsetOf(int index) const { return m_begin + qint64(index) * m_width; }

    // Whether the content says by itself that it is text.
    bool isMarked() const { return m_begin > 0 || m_width > 1; }

private:
    const QByteArray& m_content;
    int m_begin = 0; // after the byte-order mark
    int m_width = 1; // bytes of a character
    int m_low = 0;   // which of them holds the character
};

} // namespace hx
