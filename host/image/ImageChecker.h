// Walks the messages of an image, takes them apart and collects what is wrong.
#pragma once

#include "host/image/UpdateImage.h"
#include "qt/Saturated.h"

namespace hx {

class ImageChecker {
public:
    // `product` has a header and a kind of update at least.
    ImageChecker(const ImageFile& file, const ProductDescription& product, UpdateImage& result)
        : m_file(file), m_product(product), m_result(result)
    {
    }

    void check();

private:
    void checkMessage(int index);
    bool checkHead(int index);
    void reportOtherHeads();
    void skipData();
    void checkCommand(int index);
    void checkKind(int index);
    void checkData(int index);
    bool checkDataShape(int index);
    void checkNumber(int index);
    void checkAddress(int index, int count);
    void takeCode(int index, int count);
    void checkFileCheck(int index);
    void checkFileCheckFields(int index);
    bool checkSum(int index);
    void checkEnd();
    void checkTotals();

    const HxMidiData& message(int index) const;
    const UpdateKind* kindOf(int index) const;
    bool isFileCheck(int index, int subCommand) const;
    QString knownKinds() const;

    // A place after the header, as a position in the message.
    int at(int offset) const { return saturated(m_product.header.size()) + offset; }
    quint8 byteAt(int index, int position) const;
    void problem(int index, int position, const QString& text, const QString& advice = QString());

    const ImageFile& m_file;
    const ProductDescription& m_product;
    UpdateImage& m_result;
    quint32 m_nextNumber = 0;
    qint64 m_nextAddress = 0;
    int m_shortMessage = -1;     // the first data message that carries fewer bytes than it may
    int m_otherHeads = 0;        // messages that are for another product
    size_t m_firstOtherHead = 0; // the problem that reports them
    int m_fileCheck = -1;        // index of the file check
    int m_closing = -1;          // index of the closing message
    bool m_codeIsWhole = true;   // every data message could be taken apart, and none is missing
};

} // namespace hx
