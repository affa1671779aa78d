/** @file
 * The public keys that an update image must be signed with one of.
 */
#pragma once

#include "host/product/PluginLoader.h"
#include "host/signature/MinisignFile.h"

namespace hx {

struct TrustedKeys {
    /** Their file; empty: there is none, and no signature is asked for. */
    QString file;

    /** None are usable when the file cannot be read or has anything else in it. */
    Result<std::vector<PublicKey>> keys = std::vector<PublicKey>();

    bool areAskedFor() const { return !file.isEmpty(); }
};

/** The keys in the file that a person has named. */
TrustedKeys readTrustedKeys(const QString& file);

/**
 * The keys in the file beside the plugin that has the plugin's name with the ending ".pub":
 * `libtarv_valdrinboot_3041.pub`. Looked for beside the name by which the plugin was found, then
 * beside the file that this name leads to. Whatever lies there under this name is the file, also a
 * folder or a link that leads nowhere: then no image is trusted.
 */
TrustedKeys keysOf(const LoadedPlugin& plugin);

/** Where the keys of this plugin file lie; empty when there is nothing. */
QString keyFileBeside(const QString& pluginFile);

} // namespace hx
