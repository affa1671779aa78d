#include "apps/hxupdate/words/ImageWords.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

const char imageContext[] = "ImageWords";

// In the order of the faults.
const AdviceText imageTexts[] = {
    // None
    {QT_TRANSLATE_NOOP("ImageWords", "The update image is good"),
     QT_TRANSLATE_NOOP("ImageWords", "It is whole, and it is made for %1."),
     {QT_TRANSLATE_NOOP("ImageWords", "Press \"Continue\" to see what will be done.")}},
    // NoPlugin
    {QT_TRANSLATE_NOOP("ImageWords", "This file cannot be checked"),
     QT_TRANSLATE_NOOP("ImageWords",
                       "No device plugin is installed that could tell what is in it."),
     {QT_TRANSLATE_NOOP("ImageWords", "Install the device plugin of your product."),
      QT_TRANSLATE_NOOP("ImageWords", "Start this program again.")}},
    // Folder
    {QT_TRANSLATE_NOOP("ImageWords", "This is a folder"),
     QT_TRANSLATE_NOOP("ImageWords", "An update image is one file."),
     {QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\", open the folder and choose the file in it.")}},
    // Unreadable
    {QT_TRANSLATE_NOOP("ImageWords", "This file cannot be read"),
     QT_TRANSLATE_NOOP("ImageWords", "It is not there any more, or you may not open it."),
     {QT_TRANSLATE_NOOP("ImageWords", "Check that the file is there and that you may open it."),
      QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\", or drop the file anywhere on this window.")}},
    // WebPage
    {QT_TRANSLATE_NOOP("ImageWords", "This is a web page"),
     QT_TRANSLATE_NOOP("ImageWords", "A browser has saved it in the place of the update image."),
     {QT_TRANSLATE_NOOP("ImageWords", "Download the file again, from the maker of your product."),
      QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\", or drop the file anywhere on this window.")}},
    // Archive
    {QT_TRANSLATE_NOOP("ImageWords", "This is an archive"),
     QT_TRANSLATE_NOOP("ImageWords", "The update image may be in it."),
     {QT_TRANSLATE_NOOP("ImageWords", "Unpack the archive."),
      QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\" and choose the update image that was in it.")}},
    // NoImage
    {QT_TRANSLATE_NOOP("ImageWords", "This is not an update image"),
     QT_TRANSLATE_NOOP("ImageWords", "There is no MIDI message in it."),
     {QT_TRANSLATE_NOOP("ImageWords", "Get the file again, from the maker of your product."),
      QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\", or drop the file anywhere on this window.")}},
    // OtherProduct
    {QT_TRANSLATE_NOOP("ImageWords", "This image is for another product"),
     QT_TRANSLATE_NOOP("ImageWords", "Its messages are for a product of another kind."),
     {QT_TRANSLATE_NOOP("ImageWords", "Get the image that is made for your product."),
      QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\", or drop the file anywhere on this window.")}},
    // NoSignature
    {QT_TRANSLATE_NOOP("ImageWords", "This image is not signed"),
     QT_TRANSLATE_NOOP("ImageWords",
                       "The maker of %1 signs images. Who made this one cannot be known."),
     {QT_TRANSLATE_NOOP("ImageWords", "Get the image and its signature, the file that ends with "
                                      "\".minisig\", from the maker of your product."),
      QT_TRANSLATE_NOOP("ImageWords", "Put both into one folder, and choose the image again.")}},
    // OtherSigner
    {QT_TRANSLATE_NOOP("ImageWords", "This image is signed by somebody else"),
     QT_TRANSLATE_NOOP("ImageWords", "It is not signed with a key of the maker of %1."),
     {QT_TRANSLATE_NOOP("ImageWords", "Get the image and its signature, the file that ends with "
                                      "\".minisig\", from the maker of your product."),
      QT_TRANSLATE_NOOP("ImageWords", "Put both into one folder, and choose the image again.")}},
    // BadSignature
    {QT_TRANSLATE_NOOP("ImageWords", "This image is not the one that was signed"),
     QT_TRANSLATE_NOOP("ImageWords", "The image or its signature was changed."),
     {QT_TRANSLATE_NOOP("ImageWords", "Get the image and its signature, the file that ends with "
                                      "\".minisig\", from the maker of your product."),
      QT_TRANSLATE_NOOP("ImageWords", "Put both into one folder, and choose the image again.")}},
    // BadKey
    {QT_TRANSLATE_NOOP("ImageWords", "The signature cannot be checked"),
     QT_TRANSLATE_NOOP("ImageWords", "The key for images of %1 cannot be used."),
     {QT_TRANSLATE_NOOP("ImageWords", "Install the device plugin of your product."),
      QT_TRANSLATE_NOOP("ImageWords", "Start this program again.")}},
    // Damaged
    {QT_TRANSLATE_NOOP("ImageWords", "This update image is damaged"),
     QT_TRANSLATE_NOOP("ImageWords", "Some of it is missing or was changed."),
     {QT_TRANSLATE_NOOP("ImageWords", "Get the file again, from the maker of your product."),
      QT_TRANSLATE_NOOP("ImageWords",
                        "Press \"Choose file\", or drop the file anywhere on this window.")}},
};

static_assert(sizeof imageTexts / sizeof imageTexts[0] == size_t(lastImageFault) + 1,
              "every fault has its words");

} // namespace

Advice adviceOf(ImageFault fault, const QString& productName)
{
    return translated(imageContext, imageTexts[size_t(fault)], productName);
}

} // namespace hxupdate
