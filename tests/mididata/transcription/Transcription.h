#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QRegExp>
#include <QString>
#include <QStringList>

#include <cstdarg>
#include <utility>

/**
 * What HxMidiData does, written down step by step in the plainest way: texts are cut, searched and
 * filled in place, bytes are looked at one by one. It shares no code with the class. The tests
 * compare the class with it on random input, and the benchmarks show what the class's own ways gain
 * over it.
 *
 * It logs the lines that the class logs. Fields outside a buffer follow the same rules.
 */
namespace transcription {

// Hex text
QByteArray numHexToByteArray(unsigned int value);
bool appendNum(QByteArray& bytes, unsigned int value);
QByteArray setText(const char* text);
QByteArray fromText(const QString& text);
QByteArray fromText(const char* text);

// Builder
QByteArray setData(const char* fmt, ...);
void vSetData(QByteArray& bytes, const char* fmt, va_list args);

// Cutting
QList<QByteArray> split(const QByteArray& bytes, int n);
QList<QByteArray> splitOnStatus(const QByteArray& bytes);
QByteArray copied(const QByteArray& bytes, int start, int count);

// Matching
bool match(const QByteArray& bytes, const char* pattern, bool atStart);
bool match(const QByteArray& bytes, QRegExp rx, bool atStart);
bool containsRaw(const QByteArray& bytes, const QByteArray& raw);

// Comparison
bool isSame(const QByteArray& mine, const QByteArray& other);
QStringList diff(const QByteArray& mine, const QByteArray& other, int count, int offset);
QMap<unsigned int, unsigned char> diffToMap(const QByteArray& mine, const QByteArray& other,
                                            const std::pair<int, int>& range);
quint64 hash(const QByteArray& bytes);
unsigned char detectMidiCh(const QByteArray& msg, unsigned char fallback);

// Fields
int get14bit(const QByteArray& bytes, int pos, int fallback);
unsigned int getUtime(const QByteArray& bytes, int pos, int fallback);
float getFloat32(const QByteArray& bytes, int pos, float fallback);
int get32bit(const QByteArray& bytes, int pos, int fallback);
int get32bitLE(const QByteArray& bytes, int pos, int fallback);
int toInt(const QByteArray& bytes, int pos, int width, int fallback);
bool set14bit(QByteArray& bytes, int pos, int value);
QString getString(const QByteArray& bytes, int pos, int len);
QString toAsciiString(const QByteArray& bytes, int pos, int len);
int sumOfSection(const QByteArray& bytes, int pos, int len);
unsigned int sum32(const QByteArray& bytes, unsigned int pos, int end);
QByteArray cvt8to7(const QByteArray& source);

// Rendering
QString toString(const QByteArray& bytes, int count);
QString toStringFromEnd(const QByteArray& bytes, int n);
QString toString(const QByteArray& bytes, char sep, int len);
QString toString(const QByteArray& bytes, char sep, int start, int len);
QString toStringDec(const QByteArray& bytes);
QString toStringTable(const QByteArray& bytes, int len, int columns);

} // namespace transcription
