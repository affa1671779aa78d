// The record of an update that can be sent to the maker: a trace whose comments tell the versions.
#pragma once

#include "apps/hxupdate/model/ImageFacts.h"
#include "apps/hxupdate/model/ProductSearch.h"

#include "host/product/MessageNames.h"
#include "host/trace/Trace.h"
#include "host/update/UpdateResult.h"

#include <QBuffer>

namespace hxupdate {

class UpdateRecord {
public:
    // Records what happens on the bus as long as it lives.
    UpdateRecord(hx::PortBus& bus, hx::LoadedPlugin& plugin);
    ~UpdateRecord();
    UpdateRecord(const UpdateRecord&) = delete;
    UpdateRecord& operator=(const UpdateRecord&) = delete;

    void add(const ProductFacts& product);
    void add(const ImageFacts& image);
    void add(const hx::UpdateResult& result);

    QByteArray content() const { return m_content.data(); }

private:
    hx::PortBus& m_bus;
    hx::MessageNames m_names;
    QBuffer m_content;
    hx::TraceWriter m_writer;
};

} // namespace hxupdate
