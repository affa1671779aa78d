#include "apps/hxupdate/words/EndingWords.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

const char endingContext[] = "EndingWords";

// In the order of the endings.
const AdviceText endingTexts[] = {
    // Succeeded
    {QT_TRANSLATE_NOOP("EndingWords", "%1 was updated"),
     QT_TRANSLATE_NOOP("EndingWords",
                       "Every message was acknowledged, the checksums agree, and the "
                       "product answers with the version of the image."),
     {QT_TRANSLATE_NOOP("EndingWords", "You can use the product again, or switch it off.")}},
    // NotOpened
    {QT_TRANSLATE_NOOP("EndingWords", "The port could not be opened"),
     QT_TRANSLATE_NOOP("EndingWords", "Nothing was sent: the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Close all other programs that use MIDI."),
      QT_TRANSLATE_NOOP("EndingWords", "Check that the product is connected and switched on."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\".")}},
    // OtherUnit
    {QT_TRANSLATE_NOOP("EndingWords", "Another unit is connected"),
     QT_TRANSLATE_NOOP("EndingWords", "Its serial number is not the one that you reviewed. Nothing "
                                      "was sent: the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Connect the unit that you want to update, and no other."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\".")}},
    // ImageRefused
    {QT_TRANSLATE_NOOP("EndingWords", "The update image does not fit"),
     QT_TRANSLATE_NOOP("EndingWords", "Nothing was sent: the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Get the image that is made for this product."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and choose it.")}},
    // SilentBefore
    {QT_TRANSLATE_NOOP("EndingWords", "The product does not answer"),
     QT_TRANSLATE_NOOP("EndingWords", "Nothing was sent: the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Check that the product is connected and switched on."),
      QT_TRANSLATE_NOOP("EndingWords", "Switch it off and on."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\".")}},
    // WrongBefore
    {QT_TRANSLATE_NOOP("EndingWords", "Another product answered"),
     QT_TRANSLATE_NOOP("EndingWords", "It is not the one that the image is for. Nothing was sent: "
                                      "the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Connect the product that you want to update, and no "
                                       "other."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\".")}},
    // StoppedBefore
    {QT_TRANSLATE_NOOP("EndingWords", "You stopped the update"),
     QT_TRANSLATE_NOOP("EndingWords", "Nothing was sent: the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" when you want to update it.")}},
    // LostBefore
    {QT_TRANSLATE_NOOP("EndingWords", "The product was disconnected"),
     QT_TRANSLATE_NOOP("EndingWords", "Nothing was sent: the product is as it was."),
     {QT_TRANSLATE_NOOP("EndingWords", "Connect the product again."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\".")}},
    // SilentMidway
    {QT_TRANSLATE_NOOP("EndingWords", "The product stopped answering"),
     QT_TRANSLATE_NOOP("EndingWords", "The update was begun and not finished. Send the image again "
                                      "before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords",
                        "Check both MIDI cables, and switch the product off and on."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\": the product is found again."),
      QT_TRANSLATE_NOOP("EndingWords", "Send the same image. The update starts afresh.")}},
    // RefusedMidway
    {QT_TRANSLATE_NOOP("EndingWords", "The product refused the update"),
     QT_TRANSLATE_NOOP("EndingWords", "The update was begun and not finished. Send the image again "
                                      "before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\": the product is found again."),
      QT_TRANSLATE_NOOP("EndingWords", "Send the same image. The update starts afresh."),
      QT_TRANSLATE_NOOP("EndingWords", "If it is refused again, save the record and send it to the "
                                       "maker of the product.")}},
    // DamagedMidway
    {QT_TRANSLATE_NOOP("EndingWords", "Bytes are lost on the way to the product"),
     QT_TRANSLATE_NOOP("EndingWords", "The update was begun and not finished. Send the image again "
                                      "before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords", "Close all other programs that use MIDI."),
      QT_TRANSLATE_NOOP("EndingWords", "Use other MIDI cables, or another MIDI interface."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and send the same image.")}},
    // StoppedMidway
    {QT_TRANSLATE_NOOP("EndingWords", "You stopped the update"),
     QT_TRANSLATE_NOOP("EndingWords", "The update was begun and not finished. Send the image again "
                                      "before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords", "Leave the product switched on and connected."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\": the product is found again."),
      QT_TRANSLATE_NOOP("EndingWords", "Send the same image. The update starts afresh.")}},
    // LostMidway
    {QT_TRANSLATE_NOOP("EndingWords", "The connection was lost"),
     QT_TRANSLATE_NOOP("EndingWords", "The update was begun and not finished. Send the image again "
                                      "before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords", "Connect the product again and switch it on."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\": the product is found again."),
      QT_TRANSLATE_NOOP("EndingWords", "Send the same image. The update starts afresh.")}},
    // WrongMidway
    {QT_TRANSLATE_NOOP("EndingWords", "Another product took its place"),
     QT_TRANSLATE_NOOP("EndingWords", "The update was begun and not finished. Send the image again "
                                      "before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords", "Connect the product that you want to update, and no "
                                       "other."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and send the same image.")}},
    // Unacknowledged
    {QT_TRANSLATE_NOOP("EndingWords", "The update was not acknowledged"),
     QT_TRANSLATE_NOOP("EndingWords",
                       "The product holds the code of the image, but it did not acknowledge every "
                       "message. Send the image again before you use the product."),
     {QT_TRANSLATE_NOOP("EndingWords",
                        "Check both MIDI cables, and switch the product off and on."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and send the same image."),
      QT_TRANSLATE_NOOP("EndingWords", "If it ends like this again, save the record and send it to "
                                       "the maker of the product.")}},
    // StoppedUnverified
    {QT_TRANSLATE_NOOP("EndingWords", "You stopped the verification"),
     QT_TRANSLATE_NOOP("EndingWords",
                       "Everything was sent, but it was not verified. Do not take it for updated."),
     {QT_TRANSLATE_NOOP("EndingWords", "Leave the product switched on and connected."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and send the same image.")}},
    // NotProven
    {QT_TRANSLATE_NOOP("EndingWords", "The update is not proven"),
     QT_TRANSLATE_NOOP("EndingWords",
                       "Everything was sent, but the product does not report what it "
                       "should. Do not take it for updated."),
     {QT_TRANSLATE_NOOP("EndingWords", "Switch the product off and on."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and send the same image."),
      QT_TRANSLATE_NOOP("EndingWords", "If it ends like this again, save the record and send it to "
                                       "the maker of the product.")}},
    // WrongAfterwards
    {QT_TRANSLATE_NOOP("EndingWords", "Another product answered afterwards"),
     QT_TRANSLATE_NOOP("EndingWords",
                       "Everything was sent, but what answers now is another product. Do not take "
                       "yours for updated."),
     {QT_TRANSLATE_NOOP("EndingWords", "Connect the product that you want to update, and no "
                                       "other."),
      QT_TRANSLATE_NOOP("EndingWords", "Press \"Try again\" and send the same image.")}},
};

static_assert(sizeof endingTexts / sizeof endingTexts[0] == size_t(lastEnding) + 1,
              "every ending has its words");

} // namespace

Advice adviceOf(Ending ending, const QString& productName)
{
    return translated(endingContext, endingTexts[size_t(ending)], productName);
}

} // namespace hxupdate
