/** @file
 * The memory of a simulated product in its state file, while one program uses both.
 */
#pragma once

#include "host/base/FileLock.h"
#include "simulator/SimulatedProduct.h"

#include <QFile>
#include <QString>

#include <memory>

namespace hx {

/**
 * The file holds at any moment what the product's flash would: each change of the memory is written
 * at once, so that it is there after a crash too. A file that nothing changes is not written.
 */
class ProductStateFile {
public:
    /**
     * `path` is a name of host/base/FileName.h. Locks the file and makes `product` what it
     * describes; a file that is not there yet is written for the product as it is. Fails when
     * another program uses the file, or it is not a state file, or cannot be written.
     */
    static Result<std::unique_ptr<ProductStateFile>> open(const QString& path,
                                                          sim::SimulatedProduct& product);

    /**
     * Writes what has changed since the last call. To be called before the product's answer leaves:
     * when it fails, the answer must not. After a failure the file stays as it is, and each further
     * call fails with the same problem.
     */
    Result<> keep(sim::SimulatedProduct& product);

    /** Writes the whole state, when it has changed. */
    Result<> close(sim::SimulatedProduct& product);

private:
    explicit ProductStateFile(const QString& path);

    Result<> lockAndRead(sim::SimulatedProduct& product);
    Result<> write(sim::SimulatedProduct& product, int address);
    Result<> read(sim::SimulatedProduct& product);
    Result<> writeWhole(const sim::SimulatedProduct& product);

    QString m_path;
    FileLock m_lock;
    /** open where the next change goes; closed while there is no such place */
    QFile m_end;
    bool m_changed = false; /**< since the file was opened */
    Result<> m_kept;        /**< that each change could be written so far, or why one could not */
};

} // namespace hx
