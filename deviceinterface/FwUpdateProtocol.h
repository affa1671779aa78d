/** @file
 * The description of one firmware-update exchange, as a plugin gives it to the host.
 */
#pragma once

#include <QLatin1String>
#include <QRegExp>
#include <QString>

/**
 * The kinds of code image that a product may hold. An unscoped enumeration: `Fwu` and
 * `CodeType::Fwu` are the same, and both convert to `int`.
 */
enum CodeType : int {
    Unknown = 0, /**< kind not recognised, tag "unk" */
    Fwu = 1,     /**< update messages carry command byte 0x43, tag "fwu" */
    Fwd = 2,     /**< update messages carry command byte 0x42, tag "fwd" */
};

/**
 * One expected reply, as a regular expression over a message's hex text (upper case, two digits a
 * byte, no separators). The text may contain blanks, for people who read it: remove them before
 * you match.
 */
struct ResponceData {
    /** An empty pattern. */
    ResponceData() = default;

    /**
     * The Latin-1 text `pattern`, compiled case-sensitively; a null pointer gives an empty pattern.
     */
    ResponceData(const char* pattern)
        : rx(QString::fromLatin1(pattern), Qt::CaseSensitive, QRegExp::RegExp)
    {
    }

    /** The compiled pattern: case-sensitive, ordinary regular-expression syntax. */
    QRegExp rx;
};

/** What the host needs to know to send one update image and to understand the answers. */
struct FwUpdateProtocol {
    /**
     * (family << 16) | model of the product the image is for; 0x7F007F when the kind is unknown.
     */
    int fidpid = 0;

    /** Kind of the image. */
    CodeType codeType = CodeType::Unknown;

    ResponceData responseAny;    /**< any acknowledgement of an update message */
    ResponceData responseBad;    /**< "damaged on the way": send the message again */
    ResponceData responseFailed; /**< the update is over */
    ResponceData responseGood;   /**< taken: send the next message */

    /** The image's own file-check message, as it is in the list of update messages. */
    ResponceData fileCheck;

    /** How long to wait for an acknowledgement, in milliseconds. */
    int timeoutMs = 5500;
};

namespace hx {

/** The identifier word of a product whose family and model are not known. */
constexpr unsigned int unknownIdentifier = 0x7F007F;

/**
 * The tag that stands for a kind in dictionary keys such as "fwupdate.fwu.filecheck": "fwu", "fwd",
 * or "unk" for anything else.
 */
inline QLatin1String codeTypeTag(CodeType kind)
{
    switch (kind) {
    case CodeType::Fwu:
        return QLatin1String("fwu");
    case CodeType::Fwd:
        return QLatin1String("fwd");
    case CodeType::Unknown:
        break;
    }
    return QLatin1String("unk");
}

} // namespace hx
