#include "apps/hxupdate/words/ConnectWords.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

const char connectContext[] = "ConnectWords";

// In the order of the findings.
const AdviceText connectTexts[] = {
    // Searching
    {QT_TRANSLATE_NOOP("ConnectWords", "Looking for your product"),
     QT_TRANSLATE_NOOP("ConnectWords", "Each port with the name of a product is asked who is "
                                       "there. Nothing in the product is changed."),
     {}},
    // NoPlugin
    {QT_TRANSLATE_NOOP("ConnectWords", "No device plugin was found"),
     QT_TRANSLATE_NOOP("ConnectWords", "Without the plugin of your product this program does not "
                                       "know how to speak to it."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Install the device plugin of your product."),
      QT_TRANSLATE_NOOP("ConnectWords", "Start this program again.")}},
    // NoPorts
    {QT_TRANSLATE_NOOP("ConnectWords", "No MIDI port was found"),
     QT_TRANSLATE_NOOP("ConnectWords", "This computer has no MIDI port at the moment."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Connect your product, or the MIDI interface that it is "
                                        "connected to, to this computer."),
      QT_TRANSLATE_NOOP("ConnectWords", "Switch the product on."),
      QT_TRANSLATE_NOOP("ConnectWords", "Wait a moment. A new port is found by itself.")}},
    // NoProduct
    {QT_TRANSLATE_NOOP("ConnectWords", "No product was found"),
     QT_TRANSLATE_NOOP("ConnectWords",
                       "There are MIDI ports, but none of them has the name of a product."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Connect your product to this computer and switch it on."),
      QT_TRANSLATE_NOOP("ConnectWords", "Wait a moment. A new port is found by itself."),
      QT_TRANSLATE_NOOP("ConnectWords", "If your product is connected through a MIDI interface, "
                                        "press \"My product is on another port\" and choose it.")}},
    // Silent
    {QT_TRANSLATE_NOOP("ConnectWords", "The product does not answer"),
     QT_TRANSLATE_NOOP("ConnectWords", "The port was opened, but nothing answered on it."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Check that the product is switched on."),
      QT_TRANSLATE_NOOP("ConnectWords", "Check both MIDI cables, from output to input each."),
      QT_TRANSLATE_NOOP("ConnectWords", "Switch the product off and on. It is asked again every "
                                        "second.")}},
    // Unclear
    {QT_TRANSLATE_NOOP("ConnectWords", "The product answers only in part"),
     QT_TRANSLATE_NOOP("ConnectWords", "Some questions were answered, others were not."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Close all other programs that use MIDI."),
      QT_TRANSLATE_NOOP("ConnectWords", "Check both MIDI cables, from output to input each."),
      QT_TRANSLATE_NOOP("ConnectWords", "Switch the product off and on. It is asked again every "
                                        "second.")}},
    // OtherProduct
    {QT_TRANSLATE_NOOP("ConnectWords", "Another product answered"),
     QT_TRANSLATE_NOOP("ConnectWords",
                       "No device plugin on this computer is made for what answered."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Disconnect what is connected now."),
      QT_TRANSLATE_NOOP("ConnectWords", "Connect the product that you want to update."),
      QT_TRANSLATE_NOOP("ConnectWords", "If it was the right one, install its device plugin and "
                                        "start this program again.")}},
    // PortHeld
    {QT_TRANSLATE_NOOP("ConnectWords", "The port cannot be opened"),
     QT_TRANSLATE_NOOP("ConnectWords", "Another program seems to hold it."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Close all other programs that use MIDI."),
      QT_TRANSLATE_NOOP("ConnectWords", "Wait a moment. The port is tried again every second."),
      QT_TRANSLATE_NOOP("ConnectWords", "If that does not help, disconnect the product and connect "
                                        "it again.")}},
    // SeveralProducts
    {QT_TRANSLATE_NOOP("ConnectWords", "More than one product answered"),
     QT_TRANSLATE_NOOP("ConnectWords", "So that the right one is updated, only one may answer."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Disconnect all but the one that you want to update."),
      QT_TRANSLATE_NOOP("ConnectWords", "Or press \"My product is on another port\" and choose the "
                                        "port of the right one.")}},
    // Ready
    {QT_TRANSLATE_NOOP("ConnectWords", "%1 was found"),
     QT_TRANSLATE_NOOP("ConnectWords", "It answers, and its code is intact."),
     {QT_TRANSLATE_NOOP("ConnectWords",
                        "Press \"Continue\" if this is the product that you want to update.")}},
    // Recovery
    {QT_TRANSLATE_NOOP("ConnectWords", "%1 has to be recovered"),
     QT_TRANSLATE_NOOP("ConnectWords",
                       "It answers, but it holds no valid code: an update was begun and not "
                       "finished, or its code is damaged. It can be updated as ever."),
     {QT_TRANSLATE_NOOP("ConnectWords", "Leave the product switched on and connected."),
      QT_TRANSLATE_NOOP("ConnectWords", "Press \"Continue\"."),
      QT_TRANSLATE_NOOP("ConnectWords", "Send the update image again. The update starts afresh.")}},
};

static_assert(sizeof connectTexts / sizeof connectTexts[0] == size_t(lastFinding) + 1,
              "every finding has its words");

} // namespace

Advice adviceOf(const Connection& connection)
{
    const ProductFacts* product = connection.product();
    return translated(connectContext, connectTexts[size_t(connection.finding)],
                      product != nullptr ? product->name : QString());
}

} // namespace hxupdate
