#include "fuzz/support/SeedFile.h"

#include <QFile>

namespace hx {
namespace fuzz {

SeedFile::SeedFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_errorText = QStringLiteral("%1: %2").arg(path, file.errorString());
        return;
    }
    for (int line = 1; !file.atEnd(); ++line) {
        if (addSeed(file.readLine().trimmed()))
            continue;
        m_errorText = QStringLiteral("%1:%2: expected a name, a blank and pairs of hex digits, "
                                     "and the names in order")
                          .arg(path)
                          .arg(line);
        return;
    }
    if (m_seeds.isEmpty())
        m_errorText = QStringLiteral("%1: there is no input in it").arg(path);
}

bool SeedFile::addSeed(const QByteArray& line)
{
    const auto blank = line.indexOf(' ');
    const QByteArray name = blank < 0 ? line : line.left(blank);
    const QByteArray digits = blank < 0 ? QByteArray() : line.mid(blank + 1);
    const QByteArray bytes = QByteArray::fromHex(digits);
    if (name.isEmpty() || bytes.toHex() != digits)
        return false;
    if (!m_seeds.isEmpty() && !(m_seeds.last().name < name))
        return false;
    m_seeds.append({name, bytes});
    return true;
}

} // namespace fuzz
} // namespace hx
