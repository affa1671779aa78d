#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QRegExp>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstdarg>
#include <cstddef>
#include <utility>
#include <vector>

class HxMidiIn;
class QDataStream;

/**
 * A buffer of MIDI bytes with value semantics, and three small text languages.
 *
 * Bytes are unsigned, 00 to FF; nothing restricts them to 7 bits. Copies share storage until one
 * side writes. An empty buffer is valid, and it is the failure value of the whole class: nothing
 * throws. Upper and lower case are alike. Text that cannot be read gives one line on Qt's debug
 * channel and the result stated at the operation.
 *
 * Positions are byte indexes from 0. Any position, length or count may be given: sums are formed in
 * 64 bits, and what lies outside the buffer gives the result stated at the operation. 8-bit text is
 * read as Latin-1, one character a byte.
 *
 * HEX TEXT: the constructors from text, setText(), the MSTR argument of setData()
 *
 *     text      = separated | number | compact      white space at both ends is ignored
 *     separated = token { (" " | ",")+ token }      when the text holds a blank or a comma
 *     number    = "0x" digit+                       a single token, at least three characters
 *     compact   = { digit digit }                   pairs, one byte each
 *     token     = [sign] ["0x"] digit+              must fit a signed 32-bit integer
 *
 * A token becomes bytes through appendNum(), so its value decides how many bytes it gives. The
 * constructors remove the blanks first: there "F0 7E" is the compact text "F07E". Only setText()
 * itself splits at blanks.
 *
 *     Text                       Bytes
 *     "F0 7E 7F 06 01 F7"        F0 7E 7F 06 01 F7
 *     setText("7 123 12345")     07 00 23 01 23 45    123 loses its high digit, see appendNum()
 *     "0x3041"                   00 41                one number, not two bytes
 *     "F0,..,F7"                 F0 F7                ".." is logged and gives no bytes
 *     "10,-1,20"                 10                   -1 is logged and ends the text
 *     "F07"                      (none)               an odd number of digits, logged
 *     "7"                        (none)               fewer than two characters, not logged
 *
 * PATTERN: match(), startsWith(), contains() with text
 *
 * A regular expression (QRegExp's syntax) over the buffer's compact upper-case hex text. Before it
 * is applied, blanks are removed, letters become upper case, and "XX" becomes "..". So
 *
 *     .          is one hex digit, half a byte
 *     ..         is one byte
 *     0[89]      is the byte 08 or 09
 *
 * The end of the pattern need not be the end of the buffer. Unless the match must begin at the
 * start, it may begin in the middle of a byte.
 *
 *     Bytes                  Pattern                          Fits
 *     F0 7E 00 06 02 10 F7   "F0 7E .. 06 02", at the start   yes
 *     F0 7E 00 06 02 10 F7   "f0 7e xx 06"                    yes    small letters, and XX
 *     F0 7E 00 06 02 10 F7   "7E .. 06", at the start         no     begins at the second byte
 *     17 E0                  "7E", anywhere                   yes    half a byte further on
 *     F0 00 41 08 02 F7      "F0 00 41 0[89]..*F7"            yes
 *     F0 00 41 2F 46 F7      "(F0 00 41 2F ..F7|F0 00 30)"    yes
 *     F0 00 41 2F 46 F7      "F0 VV"                          no     VV is not a wildcard
 *
 * BUILDER FORMAT: setData(), vSetData()
 *
 * Tokens separated by single blanks; a comma does not separate. A token that is one of the fields
 * below takes one argument. Any other token is a hex number, added through appendNum(); one that is
 * not hex is skipped without a message. The most significant bits come first; bits beyond a field
 * are dropped.
 *
 *     Field       Argument       Bytes                                 Read back by
 *     VV V8 P8    int            as appendNum(); 00 for a negative value
 *     P14 V14     unsigned int   2 bytes of 7 bits                     get14bit()
 *     UT          unsigned int   4 bits, then 4 bytes of 7 bits        getUtime()
 *     V32 I32     unsigned int   as UT                                 get32bit()
 *     F32         double         its single-precision bits as UT       getFloat32()
 *     NIB24       unsigned int   6 bytes of 4 bits
 *     NIB32       unsigned int   8 bytes of 4 bits
 *     MSTR        const char*    hex text, as the constructor from const char* reads it
 *     CSTR        const char*    the characters, without the terminating zero
 *
 *     Call                                     Bytes
 *     setData("F0 7E V14 F7", 0x2345u)         F0 7E 46 45 F7
 *     setData("f0 nib24 f7", 0x123456u)        F0 01 02 03 04 05 06 F7
 *     setData("F0,7E V8", 5)                   05               "F0,7E" is not a hex number
 *     setData("F0 MSTR 11 F7", "")             F0 F7            logged; see setData()
 */
class HxMidiData {
public:
    /** The MIDI bytes in transmission order. */
    QByteArray bytes;
    /** For the owner's use; set to 0 by construction, clear(), setText() and setData(). */
    quint64 auxA = 0;
    /** The input that delivered the bytes, or null. Reset when auxA is reset; never dereferenced. */
    HxMidiIn* source = nullptr;
    /** For the owner's use; set to 0 by construction only. */
    quint64 auxB = 0;
    /** For the owner's use; set to 0 by construction only. */
    quint64 auxC = 0;

    // ---- Making a buffer. Copying copies all five members; the bytes are shared. ----
    /** An empty buffer. */
    HxMidiData() = default;
    /** The bytes of `v`, delivered by `in`; none when their number is negative as an int. */
    HxMidiData(const std::vector<unsigned char>& v, HxMidiIn* in);
    /** The bytes that appendNum() forms of `value`: 5 gives 05, 0x1234 gives 00 34. */
    HxMidiData(int value);
    /** The bytes of `a`, shared with it. */
    HxMidiData(const QByteArray& a);
    /** Hex text, after every blank and every newline has been removed. */
    HxMidiData(const QString& text);
    /** As the constructor from a constant text; `text` is not changed. */
    HxMidiData(QString& text);
    /** Hex text, after every blank (but no newline) has been removed; empty for null. */
    HxMidiData(const char* text);

    /**
     * Replaces the contents by what the hex text denotes; auxA and source become 0. Null gives an
     * empty buffer; `text` may lie in this buffer's own storage. What cannot be read is logged as
     * "HxMidiData::HxMidiData(const char*,int) - ", whichever entry was used, then "error converting
     * hex string: " for a token that is not a number, which is skipped, or "invalid hex string
     * format: " for an odd number of digits without separators, which gives an empty buffer, then
     * the whole text.
     */
    void setText(const char* text);

    /** True when `s` has at least three characters and begins with "0x" or "0X". */
    static bool is0xHexStr(QString& s);
    /** Appends numHexToByteArray(value). @return false for 0xFFFFFFFF, which appends nothing. */
    bool appendNum(unsigned int value);

    /**
     * Replaces the contents by what the builder format and its arguments denote; auxA and source
     * become 0. A null format gives an empty buffer. Too few arguments, or arguments of other types
     * than the format asks for, are undefined, as with any variable argument list.
     *
     * An MSTR or CSTR argument without bytes is logged: "Invalid value for format( ", the format,
     * " ) at specifier ", the token. The field adds nothing, and the token after it is skipped as
     * well, even if it is the empty piece between two blanks; its argument is not taken.
     */
    void setData(const char* fmt, ...);
    /** As setData(), but appends to what the buffer holds; auxA and source keep their values. */
    void vSetData(const char* fmt, va_list args);

    /** Appends the other's bytes, or its own; returns itself, unchanged if that is too long. */
    HxMidiData& append(const HxMidiData& other);

    /** Empties the buffer; auxA and source become 0, auxB and auxC keep their values. */
    void clear();

    /**
     * Makes the buffer a view of the caller's memory, without copying. That memory must stay alive
     * and unchanged while this buffer or a copy reads it; the first write makes a private copy.
     * `len` is taken as an int; negative or a null `buf` gives an empty buffer. The other members
     * keep their values.
     */
    void copyFromBuffer(const char* buf, size_t len);

    /**
     * Empties the buffer as clear() does, and leaves an empty array that is not null. The source is
     * not read and the count not used: cvt8to7() is what packs 8-bit data into 7-bit bytes.
     */
    void fromRaw8bit(const char* src, int n);
    /** Empties the buffer, as fromRaw8bit(const char*, int). */
    void fromRaw8bit(const QByteArray& raw);

    // ---- Cutting and copying out ----
    /**
     * The bytes from `pos`, `len` of them, by QByteArray::mid()'s rules: a negative `len` or one
     * past the end means to the end, a `pos` past the end gives an empty array.
     */
    QByteArray mid(int pos, int len) const;

    /**
     * Consecutive pieces of `n` bytes, the last one perhaps shorter. A buffer of `n` bytes or fewer
     * gives an EMPTY list, as does n = 0. A negative `n` gives at most one piece: the first
     * (size modulo -n) bytes, when that number is not 0.
     */
    QList<HxMidiData> split(int n) const;

    /**
     * Cuts a byte stream into MIDI messages. A status byte (80 and above) begins a piece; an F7
     * that follows other bytes ends their piece instead. So a real-time byte inside a System
     * Exclusive message cuts it in two, and data bytes before the first status byte or after F7
     * form a piece without one. Running status is not expanded: 90 40 7F 41 7F is one piece. An F7
     * after an F7 has nothing to end: F0 01 F7 F7 02 gives F0 01 F7 and F7 02.
     */
    QList<HxMidiData> splitOnStatus() const;

    /**
     * Empties `out`, then copies bytes [start, start + n) into it, n being the smaller of size -
     * start and `count` (-1: the size). Copies nothing when n < 1 or `start` is negative.
     */
    void copyToStdVec(std::vector<unsigned char>& out, int start, int count) const;
    /** A new vector filled as by copyToStdVec(). */
    std::vector<unsigned char> toStdVector(int start, int count);

    /**
     * Copies the bytes that copyToStdVec() would copy, each to the SAME index of `buf` that it has
     * here: `buf` must hold start + n bytes, of which the first `start` stay untouched.
     * A null `buf` or a negative `start` copies nothing.
     */
    void copyToBuffer(char* buf, int start, int count) const;

    // ---- Matching and comparing ----
    /**
     * Whether the text pattern fits somewhere, or, with `atStart`, whether its first fit begins
     * with the first byte. A null pattern is an empty one and fits every buffer.
     */
    bool match(const char* pattern, bool atStart) const;
    /** The same with `rx`, made case-insensitive but otherwise taken as it is. */
    bool match(QRegExp rx, bool atStart) const;

    /** match(pattern, false). */
    bool contains(const char* pattern) const;
    /** Whether `raw` occurs as a run of raw bytes; not a pattern, unlike startsWith(). */
    bool contains(const QByteArray& raw) const;
    /** Whether the other buffer's bytes occur as a run of raw bytes. */
    bool contains(const HxMidiData& other) const;

    /** match(pattern, true). */
    bool startsWith(const char* pattern) const;
    /** match() at the start with the array's characters, up to the first zero, as pattern TEXT. */
    bool startsWith(const QByteArray& pattern) const;
    /** match() at the start with the other's bytes, up to the first zero, as pattern TEXT. */
    bool startsWith(const HxMidiData& other) const;

    /**
     * Equality within the tolerances of the device's data. Sizes must agree. Bytes 0-9, 26-68,
     * 71-75 and 633-647 must be equal, bytes 10-13 and 17-25 may differ by up to 4, all others
     * (14-16, 69-70, 76-632 and from 648 on) are not compared.
     */
    bool isSame(const HxMidiData& other) const;

    /**
     * One line "[index] mine!=other", all decimal, for each differing byte of a range. With n the
     * smaller size, the range is [offset, offset + count) when 1 <= count <= n and it ends within n
     * (an `offset` below 1 counts as 0), and [0, n) otherwise. A `count` above 0 with differing
     * sizes first adds "Size Mismatch: mine != other".
     */
    QStringList diff(const HxMidiData& other, int count, int offset) const;
    /**
     * diff() against `len` raw bytes: no size line, all indexes below the smaller size. A negative
     * `len` counts as 0; a null `data` gives the one line "Invalid Arg".
     */
    QStringList diff(const char* data, int len) const;

    /**
     * The other buffer's byte at each index of a range where the two differ. `range` is (offset,
     * count), the other way round than in diff(), with n the smaller size: it begins at the offset
     * and ends at n for count -1, at offset + count when 1 <= count <= n, offset > 0 and that does
     * not exceed n, and at the count itself otherwise (so it may be empty); what lies outside
     * [0, n) is left out. Against an empty buffer every index of this one is given the value 0.
     */
    QMap<unsigned int, unsigned char> diffToMap(const HxMidiData& other,
                                                const std::pair<int, int>& range) const;

    /** RS string hash of the bytes, 64 bits wide and over SIGNED characters; 0 when empty. */
    quint64 hash() const;

    /**
     * Three bytes or more: the third byte's low four bits if the second is 7E (universal
     * non-real-time), else `fallback`, for channel messages too. Fewer: the first byte's low four
     * bits; 0 when empty.
     */
    static unsigned char detectMidiCh(const HxMidiData& msg, unsigned char fallback);

    // ---- Value fields. b[i] is the byte at pos + i; all results are 32-bit and wrap. ----
    /**
     * b[0] * 128 + b[1], both SIGNED (81 01 gives -16255). Only a `pos` above the size gives
     * `fallback`: bytes outside the buffer, at its end as before its beginning, read as 0.
     */
    int get14bit(int pos, int fallback) const;

    /** Five 7-bit groups, most significant first; of the first byte only the low 4 bits count. */
    unsigned int getUtime(int pos, int fallback) const;
    /** The bits that getUtime() assembles, read as an IEEE 754 single-precision number. */
    float getFloat32(int pos, float fallback) const;

    /**
     * Five 7-bit groups, most significant first, ADDED up, b[1] to b[4] as signed bytes: equal to
     * getUtime() while they are below 80. Fewer than five bytes at `pos`, or a negative `pos`, give
     * `fallback`, as with all the five-byte getters.
     */
    int get32bit(int pos, int fallback) const;
    /** As get32bit(), least significant group first. */
    int get32bitLE(int pos, int fallback) const;

    /**
     * A number of `width` bytes, most significant first: width 1 is a signed byte, width 2 two
     * 7-bit groups of signed bytes, widths 3 and 4 whole 8-bit bytes (signed ones added; the first
     * of four is unsigned). `fallback` when it does not fit, `pos` is negative or `width` is not 1
     * to 4.
     */
    int toInt(int pos, int width, int fallback) const;

    /**
     * Writes two 7-bit groups of `value` at `pos` and `pos` + 1, growing the buffer by a byte when
     * `pos` is the last one. @return false, changing nothing, when there is no byte at `pos`.
     */
    bool set14bit(int pos, int value);

    /**
     * `len` characters, each a byte without its top bit; with `len` 0 all from `pos` on but the
     * buffer's last byte (normally F7). Bytes outside the buffer read as U+0000, but the text never
     * grows beyond the larger of 1,048,576 characters and the buffer's size. Empty when it is
     * longer than a QString can be, as is every text here: that is about 1,073,741,000 characters.
     */
    QString getString(int pos, int len) const;

    /** mid(pos, len) as Latin-1 text, zero bytes too; empty when pos + len is above the size. */
    QString toAsciiString(int pos, int len) const;

    /** Sum of the section mid(pos, len) modulo 128; `len` -1 means to the end. Not complemented. */
    int sumOfSection(int pos, int len) const;

    /**
     * Sum of the unsigned bytes [pos, end) modulo 2^32; a negative `end` counts from the buffer's
     * end (-1 leaves out the last byte). `pos` is compared as a signed number; an `end` not above
     * it gives 0. Bytes outside the buffer count as 0.
     */
    unsigned int sum32(unsigned int pos, int end) const;

    /**
     * Packs `n` bytes of 8 bits into 7-bit bytes: for every seven of them a byte of their top bits
     * (bit 6 belongs to the first), then the bytes without them. This buffer is not involved.
     * `dst` must have room for n + ceil(n / 7) bytes.
     * @return the number of bytes written; 0 when a pointer is null.
     */
    unsigned int cvt8to7(char* dst, const char* src, unsigned int n);

    /**
     * A number as bytes, most significant first, in a fixed form:
     *
     *     0 ... 0xFF               one byte
     *     0x100 ... 0xFFFE         two: 00 and the LOW byte; the high byte is lost (0x1234: 00 34)
     *     0xFFFF ... 0xFFFFFE      three
     *     0xFFFFFF ... 0xFFFFFFFE  four
     *     0xFFFFFFFF               none; logs "HxMidiData::numHexToByteArray(quint32) - error"
     */
    static QByteArray numHexToByteArray(unsigned int value);

    /** Removes the last `n` bytes: nothing for n <= 0, everything for n above the size. */
    void chomp(int n);

    /**
     * Replaces `len` bytes at `pos` by `with`, by QByteArray::replace()'s rules, and returns the
     * resulting bytes. Any `len` may be given: below 1 inserts, past the end takes all that
     * follows `pos`. When `pos` is past the end, the gap is filled with blanks. A negative `pos`
     * or a result longer than an array can be changes nothing.
     */
    QByteArray replace(int pos, int len, const QByteArray& with);

    // ---- Text. Hex digits are upper case. ----
    /**
     * The first `count` bytes (-1: all) without separators: F07E7F. Null for an empty buffer;
     * empty, but not null, for `count` 0 of any other.
     */
    QString toString(int count) const;

    /** The last `n` bytes without separators; empty for n <= 0. */
    QString toStringFromEnd(int n) const;
    /** The first `len` bytes (-1: all) with `sep` between neighbours: F0:7E:7F. */
    QString toString(char sep, int len) const;
    /**
     * The section mid(start, min(len + start, size)) with `sep` between neighbours: a `start` above
     * 0 shows up to len + start bytes, not `len`. A `start` at or past the end counts as 0.
     */
    QString toString(char sep, int start, int len) const;
    /** All bytes in decimal, separated by single blanks: 240 126 127. */
    QString toStringDec() const;

    /**
     * A dump of the first `len` bytes (-1: all), `columns` to a row; empty for `columns` below 1.
     *
     * A row is its offset in hex (three digits or more), " | " and the bytes separated by blanks.
     * 16 columns have a heading, and a dash after the eighth byte of a row. A single row ends with
     * its last digit. Of several rows, a partial last one is followed by a blank, a full one by a
     * newline and the next row's label. 8 bytes in 4 columns are
     *
     *     000 | 00 01 02 03
     *     004 | 04 05 06 07
     *     008 |
     */
    QString toStringTable(int len, int columns) const;
};

/** Writes the bytes alone, as a QByteArray: a null one differs from an empty one. */
QDataStream& operator<<(QDataStream& stream, const HxMidiData& data);
/** Replaces the bytes alone; the other members keep their values. */
QDataStream& operator>>(QDataStream& stream, HxMidiData& data);
