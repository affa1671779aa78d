// Where an update image comes from: its signature, held against the keys that are trusted.
#pragma once

#include "apps/commandline/Command.h"
#include "apps/hxhost/commands/ImageReport.h"

#include "host/product/PluginLoader.h"

namespace hx::host {

struct OriginOptions {
    std::string publicKey;   // empty: the one beside the plugin
    std::string signature;   // empty: the one beside the image
    bool isUnsigned = false; // it is not looked at
};

// --pubkey and --signature.
void addOriginOptions(const Command& command, OriginOptions& options);

// --unsigned too, for commands that send the image.
void addSendingOriginOptions(const Command& command, OriginOptions& options);

// The keys that a person has named, else those of the plugin.
TrustedKeys chosenKeys(const OriginOptions& options, const LoadedPlugin& plugin);

// Fails the command, which was asked to look at a signature, and returns false.
bool failWithoutKeys(CommandContext& context);

// Reads an image for the product. Where there are keys its signature is looked at before
// what is in it; what comes of that is added to the report and the trace. None, with the problem in
// the report, when either is not good: then nothing may be sent.
std::optional<LoadedImage> readTrustedImage(CommandContext& context, const std::string& path,
                                            const OriginOptions& options, const TrustedKeys& keys,
                                            const ProductDescription& product);

// "not signed: its origin is not known", and the like for each verdict.
QString originText(const SignatureVerdict& verdict);

} // namespace hx::host
