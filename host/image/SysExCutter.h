// Cuts bytes of a file into SysEx messages and says what does not belong.
#pragma once

#include "host/image/ImageFile.h"

namespace hx {

// Bytes are added one by one, each with its place in the file; `finish` ends the file. A message
// that is cut off and bytes outside of messages become problems, one for each run.
class SysExCutter {
public:
    explicit SysExCutter(ImageFile& file) : m_file(file) {}

    void add(quint8 byte, qint64 offset);
    void finish();

private:
    void begin(qint64 offset);
    void complete();
    void cutOff(const QString& what, qint64 offset);
    void addStray(quint8 byte, qint64 offset);
    void problem(qint64 offset, const QString& text);

    ImageFile& m_file;
    FileMessage m_message;
    int m_number = 0; // of the message under way or the next one
    bool m_inMessage = false;
    bool m_isFull = false;  // further messages are counted and not kept
    bool m_inStray = false; // the run of bytes outside of messages is reported already
};

} // namespace hx
