#include "apps/hxupdate/pages/ImagePage.h"

#include "apps/hxupdate/parts/FactList.h"
#include "apps/hxupdate/parts/FileDialogs.h"
#include "apps/hxupdate/words/ImageWords.h"
#include "qt/Saturated.h"

#include <QFileInfo>

namespace hxupdate {

namespace {

constexpr int mostProblems = 5;

} // namespace

ImagePage::ImagePage(UpdateModel& model)
    : Page(model, "imagePage"), m_file(new FactList),
      m_back(addButton("back", [this] { this->model().goBack(); })),
      m_choose(addButton("choose",
                         [this] {
                             chooseImageFile(this, [this](const QString& path) {
                                 this->model().takeFile(path);
                             });
                         })),
      m_continue(addButton("continue", [this] { this->model().useImage(); }))
{
    add(m_file);
    m_back->setText(tr("&Back"));
    m_choose->setText(tr("Choose &file..."));
    m_continue->setText(tr("&Continue"));
    refresh();
}

Advice ImagePage::advice() const
{
    const ImageFacts& image = model().image();
    if (!image.isChosen())
        return {tr("Choose the update image"),
                tr("It is the file with the new firmware, from the maker of your product."),
                {tr("Press \"Choose file\", or drop the file anywhere on this window.")}};
    return adviceOf(image.fault, model().product().name);
}

void ImagePage::showFile()
{
    const ImageFacts& image = model().image();
    Facts facts;
    if (image.isChosen())
        facts << qMakePair(tr("File"), QFileInfo(image.path).fileName());
    for (const QString& problem : image.problems.mid(0, mostProblems))
        facts << qMakePair(tr("Details"), problem);
    if (image.problems.size() > mostProblems)
        facts << qMakePair(tr("Details"), tr("and %n more", nullptr,
                                             hx::saturated(image.problems.size()) - mostProblems));
    m_file->show(facts);
}

void ImagePage::refresh()
{
    say(advice());
    showFile();
    m_continue->setEnabled(model().image().isGood());
}

} // namespace hxupdate
