#include "apps/hxupdate/pages/ReviewPage.h"

#include "apps/hxupdate/parts/FactList.h"
#include "apps/hxupdate/words/Units.h"

#include <QFileInfo>
#include <QLocale>

namespace hxupdate {

ReviewPage::ReviewPage(UpdateModel& model)
    : Page(model, "reviewPage"), m_facts(new FactList),
      m_back(addButton("back", [this] { this->model().goBack(); })),
      m_start(addButton("start", [this] { this->model().startUpdate(); }))
{
    add(m_facts);
    m_back->setText(tr("&Back"));
    refresh();
}

void ReviewPage::refresh()
{
    say({tr("Review what will be done"),
         tr("Nothing has been sent yet. Check that this is what you want."),
         {tr("Leave %1 switched on and connected until the end is told.")
              .arg(model().product().name),
          tr("Until then do not play, and do not use other programs that use MIDI."),
          tr("Until then do not switch this computer off or close its lid.")}});
    showFacts();
    m_start->setText(verbText(model().change(), model().product().name));
}

void ReviewPage::showFacts()
{
    const ProductFacts& product = model().product();
    const ImageFacts& image = model().image();
    const auto orUnknown = [](const QString& text, const QString& unknown) {
        return text.isEmpty() ? unknown : text;
    };
    m_facts->show({{tr("Product"), product.name},
                   {tr("Serial number"), orUnknown(product.serial, tr("not known"))},
                   {tr("Installed version"), orUnknown(product.version, tr("none that is valid"))},
                   {tr("Version of the image"), image.version},
                   {tr("Kind of the image"), kindText(image.kind)},
                   {tr("Size"),
                    tr("%1 in %n message(s)", nullptr, image.messages).arg(sizeText(image.bytes))},
                   {tr("File"), QFileInfo(image.path).fileName()},
                   {tr("Signature"), originText(image.origin)},
                   {tr("What it does"), changeText(model().change())},
                   {tr("Time"), tr("about %1").arg(durationText(image.wireMicroseconds))}});
}

} // namespace hxupdate
