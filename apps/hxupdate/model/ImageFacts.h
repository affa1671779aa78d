// What is known of the update image that was chosen.
#pragma once

#include "deviceinterface/FwUpdateProtocol.h"

#include <QString>
#include <QStringList>

namespace hxupdate {

struct ImageFacts {
    QString path; // empty: none was chosen
    CodeType kind = CodeType::Unknown;
    QString version;
    qint64 codeBytes = 0;
    qint64 bytes = 0; // that travel
    int messages = 0;
    qint64 wireMicroseconds = 0; // that they take
    QStringList problems;        // in the host's words; empty: it may be installed

    bool isChosen() const { return !path.isEmpty(); }
    bool isGood() const { return isChosen() && problems.isEmpty(); }
};

// What installing the image does to the version that is installed.
enum class Change { Upgrade, Downgrade, Reinstall, Recover };

// `installed` is empty while the product holds no valid code.
Change changeOf(const QString& installed, const QString& version);

} // namespace hxupdate
