/** @file
 * Reads the SysEx messages of a file, with the place in the file of every byte.
 */
#pragma once

#include "host/image/ImageProblems.h"
#include "mididata/HxMidiData.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace hx {

enum class ImageFormat {
    Unknown,
    RawSysEx, /**< bytes F0 ... F7, one message after the other */
    /**
     * the same as hexadecimal pairs, blanks, commas and line ends between them or not,
     * in UTF-8 or UTF-16, with a byte-order mark or without
     */
    HexText,
    MidiFile, /**< Standard MIDI File with F0 and F7 events */
    WebPage,  /**< no image: what a download saves in the place of one */
    Archive,  /**< no image: one may be in it */
};

/** "raw SysEx", "hex text", "Standard MIDI File", "web page", "archive" or "unknown". */
QString imageFormatName(ImageFormat format);

struct FileMessage {
    HxMidiData data;
    std::vector<qint64> offsets; /**< place in the file of each byte of `data` */
    int number = 0; /**< among all messages of the file, from 0; those that are cut off count too */

    /** Place of byte `position`, or of the last byte when the message is shorter; -1 when empty. */
    qint64 offsetOf(int position) const;
};

/**
 * The messages found, in the order in which they are to be sent, and whatever is wrong with the
 * file itself. Messages that are cut off are not among them; they are among the problems.
 */
struct ImageFile {
    ImageFormat format = ImageFormat::Unknown;
    qint64 size = 0;
    QByteArray content; /**< the file itself, as it lies on the disk; empty where there is none */
    std::vector<FileMessage> messages;
    ImageProblems problems;
    QStringList warnings; /**< what was skipped because it does no harm */
};

/** Files above this size are refused unread: four times the largest image, as hex text. */
constexpr qint64 maxImageFileBytes = qint64(16) * 1024 * 1024;

/** What comes after so many messages is refused too: the largest image has 9365. */
constexpr size_t maxImageFileMessages = 65536;

/** Reads from memory. The format is told by the content alone. */
ImageFile parseImageFile(const QByteArray& content);

/** Reads a file; one that cannot be read gives a problem. */
ImageFile readImageFile(const QString& path);

/**
 * Wraps messages that come from no file: offsets count as if they stood in one, one after another.
 */
ImageFile imageFileOf(const QList<HxMidiData>& messages);

} // namespace hx
