// The page on which the update image is chosen.
#pragma once

#include "apps/hxupdate/pages/Page.h"

#include <QCoreApplication>

namespace hxupdate {

class FactList;

class ImagePage final : public Page {
    Q_DECLARE_TR_FUNCTIONS(ImagePage)

public:
    explicit ImagePage(UpdateModel& model);
    void refresh() override;

private:
    Advice advice() const;
    void showFile();

    FactList* m_file;
    QPushButton* m_back;
    QPushButton* m_choose;
    QPushButton* m_continue;
};

} // namespace hxupdate
