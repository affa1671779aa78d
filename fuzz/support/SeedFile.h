// The seeds of a fuzz target, read from their text file: one input a line (its name, a blank, its
// bytes in hex; a name alone is the empty input), sorted by name.
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace hx {
namespace fuzz {

struct Seed {
    QByteArray name;
    QByteArray bytes;
};

class SeedFile {
public:
    explicit SeedFile(const QString& path);

    const QVector<Seed>& seeds() const { return m_seeds; }

    // Names the file and the line that is not as it should be; empty when all are.
    const QString& errorText() const { return m_errorText; }

private:
    bool addSeed(const QByteArray& line);

    QVector<Seed> m_seeds;
    QString m_errorText;
};

} // namespace fuzz
} // namespace hx
