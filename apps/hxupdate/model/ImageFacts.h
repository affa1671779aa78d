// What is known of the update image that was chosen.
#pragma once

#include "deviceinterface/FwUpdateProtocol.h"
#include "host/signature/ImageSignature.h"

#include <QString>
#include <QStringList>

namespace hxupdate {

// What is wrong with a file that was handed over as an image.
enum class ImageFault {
    None,
    NoPlugin,     // nothing here can tell what is in it
    Folder,       // it is not a file
    Unreadable,   // it is gone, or may not be opened
    WebPage,      // what a download has saved in the place of a file
    Archive,      // an image may be in it
    NoImage,      // there is no message in it
    OtherProduct, // its messages are for a product that the plugin does not serve
    NoSignature,  // its maker signs images, and there is no signature of this one
    OtherSigner,  // it is signed with a key that is not trusted
    BadSignature, // it is not what was signed
    BadKey,       // the key that it should be signed with cannot be used
    Damaged,      // some of it is missing or was changed
};

constexpr ImageFault lastImageFault = ImageFault::Damaged;

struct ImageFacts {
    QString path; // empty: none was chosen
    CodeType kind = CodeType::Unknown;
    QString version;
    qint64 codeBytes = 0;
    qint64 bytes = 0; // that travel
    int messages = 0;
    qint64 wireMicroseconds = 0; // that they take
    hx::SignatureVerdict origin;
    ImageFault fault = ImageFault::None;
    QStringList problems; // the same one by one, in the host's words

    bool isChosen() const { return !path.isEmpty(); }
    bool isGood() const { return isChosen() && fault == ImageFault::None; }
};

// What installing the image does to the version that is installed.
enum class Change { Upgrade, Downgrade, Reinstall, Recover };

// `installed` is empty while the product holds no valid code.
Change changeOf(const QString& installed, const QString& version);

} // namespace hxupdate
