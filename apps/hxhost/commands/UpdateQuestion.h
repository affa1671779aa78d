// The question before an update: what would be done to which instrument.
#pragma once

#include "apps/hxhost/commands/ImageReport.h"

#include "host/base/WirePace.h"
#include "host/update/UpdateResult.h"

namespace hx::host {

// How the version to be installed compares with the installed one.
enum class VersionStep { Unknown, Upgrade, Reinstall, Downgrade };

// Both are numbers with dots between them; Unknown when one of them is something else.
VersionStep versionStep(const QString& installed, const QString& offered);

// "about 4 min 12 s", counting the pause after each message; at no limited rate it cannot be said.
QString sendingTime(const UpdateImage& image, const Pace& pace);

// Whether an image with a good signature is older than what the instrument has. Every old version is
// signed as well: whoever wants its faults back need not forge anything.
bool isSignedDowngrade(const UpdateResult& asked, const LoadedImage& loaded);
extern const QString signedDowngradeText;

// `asked` is the run so far: identity, version and serial number are read.
QString updateQuestion(const UpdateResult& asked, const LoadedImage& loaded,
                       const QString& productName, const QString& portName, const Pace& pace);

} // namespace hx::host
