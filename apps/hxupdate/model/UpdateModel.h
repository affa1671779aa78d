// The state of the window and all that changes it, without any widget.
#pragma once

#include "apps/hxupdate/model/Newest.h"
#include "apps/hxupdate/model/UpdateSession.h"

#include <QObject>
#include <QThread>

namespace hxupdate {

// The state, and the page that shows it.
enum class Step { Connect, ChooseImage, Review, Updating, Verifying, Verdict };

// What happened beside the steps, and is told in one line.
enum class Notice {
    None,
    ProductAway,   // the product that was found is no longer connected
    ProductBack,   // it is connected again, and the update goes on
    ImageKept,     // an image was handed over and waits for a product
    ImageBad,      // an image was handed over that cannot be used
    FileNotNow,    // a file cannot be taken while an update runs
    NoFile,        // what was dropped is somewhere else than on this computer
    OneFileOnly,   // several files were handed over at once
    TraceBad,      // a recorded trace was handed over that cannot be read
    RecordSaved,   // the record was written
    RecordNotSaved // the record could not be written
};

constexpr Notice lastNotice = Notice::RecordNotSaved;

// Everything that takes time is done on a thread of its own, in the order in which it was asked
// for; what comes of it is told by signals on this object's thread.
class UpdateModel final : public QObject {
    Q_OBJECT

public:
    explicit UpdateModel(Surroundings surroundings, QObject* parent = nullptr);
    // Ends what is under way, an update between two messages, and waits for that.
    ~UpdateModel() override;

    Step step() const { return m_step; }
    const Connection& connection() const { return m_connection; }
    const ImageFacts& image() const { return m_image; }
    const hx::UpdateProgress& progress() const { return m_progress; }
    const UpdateEnd& end() const { return m_end; }

    // The product to update: the one that was reviewed, once there is one.
    const ProductFacts& product() const { return m_product; }
    Change change() const { return changeOf(m_product.version, m_image.version); }

    bool isRunning() const { return m_step == Step::Updating || m_step == Step::Verifying; }
    bool isStopping() const { return m_stopped; }
    bool staysAwake() const { return m_staysAwake; }

    // Asked for once a second: looks which ports there are.
    void look();
    // Asks this port alone from now on; empty: the ports that fit.
    void pickPort(const QString& port);
    // Hands a file over: an update image, or a recorded trace.
    void takeFile(const QString& path);
    void tell(Notice notice, const QString& detail = QString());

    void useProduct();  // Connect, with one product: on
    void useImage();    // Choose image, with a good one: on
    void goBack();      // Choose image, Review: back
    void startUpdate(); // Review: on
    void stop();        // Updating, Verifying: ends between two messages
    void startAgain();  // Verdict: to the beginning
    void saveRecord(const QString& path);

Q_SIGNALS:
    void stepChanged();
    void connectionChanged();
    void imageChanged();
    void progressed();
    void stopping();
    void traceTaken(const QString& path, const hx::TraceEvents& trace);
    void noticed(hxupdate::Notice notice, const QString& detail);

private:
    template <typename Work, typename Done>
    void post(Work work, Done done);
    template <typename Work, typename Done>
    void run(Work work, Done done);
    int pluginInUse() const;
    void go(Step step);
    void takeConnection(const Connection& connection);
    void setConnection(const Connection& connection);
    void takeTaken(const TakenFile& taken);
    void setImage(const ImageFacts& image);
    void takeProgress();
    void takeEnd(const UpdateEnd& end);
    UpdateWatch watch();

    UpdateSession m_session; // used on m_thread only
    QThread m_thread;
    QObject m_queue; // lives on m_thread: what is posted to it runs there, one after the other
    Newest<hx::UpdateProgress> m_told;
    std::atomic<bool> m_stopped{false};
    std::atomic<bool> m_searchEnded{false}; // something else waits for its turn
    int m_waiting = 0;                      // jobs asked for and not done, searches aside

    Step m_step = Step::Connect;
    Connection m_connection;
    ProductFacts m_product;
    ImageFacts m_image;
    hx::UpdateProgress m_progress;
    UpdateEnd m_end;
    bool m_isLooking = false;
    bool m_staysAwake = false;
};

} // namespace hxupdate
