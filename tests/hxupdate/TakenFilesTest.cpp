// Files that are handed over: which can be used, and what is said of the others.
#include "tests/hxupdate/Bench.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"
#include "qt/Saturated.h"
#include "tests/support/NamesOfBytes.h"

using namespace hxupdate;

namespace {

QByteArray zipArchive()
{
    return QByteArray::fromHex("504B03041400000008000000210000000000") + QByteArray(40, '\1');
}

QList<HxMidiData> messagesForOtherModel()
{
    QList<HxMidiData> messages = samples::messages();
    for (HxMidiData& message : messages) {
        message.bytes[5] = 0x42;
        message = samples::resummed(message);
    }
    return messages;
}

// Hands files over and waits until they were judged.
class FileBench : public Bench {
public:
    ImageFacts take(const QString& path)
    {
        model->takeFile(path);
        EXPECT_TRUE(waitUntil([&] { return model->image().path == path; }));
        return model->image();
    }

    ImageFault faultOf(const QByteArray& content)
    {
        return take(files.write(QString("file%1").arg(++m_count), content)).fault;
    }

private:
    int m_count = 0;
};

} // namespace

TEST(TakenFiles, EachKindOfFaultIsToldApart)
{
    FileBench bench;
    bench.goTo(Step::ChooseImage);
    EXPECT_EQ(bench.faultOf("<!DOCTYPE html><html><body>Not found</body></html>"),
              ImageFault::WebPage);
    EXPECT_EQ(bench.faultOf(zipArchive()), ImageFault::Archive);
    EXPECT_EQ(bench.faultOf({}), ImageFault::NoImage);
    EXPECT_EQ(bench.faultOf("Dear musician, thank you for your order.\n"), ImageFault::NoImage);
    EXPECT_EQ(bench.faultOf(samples::content(messagesForOtherModel())), ImageFault::OtherProduct);
    EXPECT_EQ(bench.faultOf(samples::content(samples::messages().mid(1))), ImageFault::Damaged);
    EXPECT_EQ(bench.take(bench.files.folder()).fault, ImageFault::Folder);
    EXPECT_EQ(bench.take(bench.files.path("gone.syx")).fault, ImageFault::Unreadable);
    EXPECT_EQ(bench.take("/dev/null").fault, ImageFault::Unreadable);
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
}

TEST(TakenFiles, EachFaultIsAlsoToldInTheHostsWords)
{
    FileBench bench;
    bench.goTo(Step::ChooseImage);
    for (const QByteArray& content : {QByteArray("<html>"), zipArchive(), QByteArray(),
                                      samples::content(messagesForOtherModel())}) {
        EXPECT_NE(bench.faultOf(content), ImageFault::None);
        EXPECT_FALSE(bench.model->image().problems.isEmpty());
    }
}

TEST(TakenFiles, DamageIsToldWhereverItIs)
{
    FileBench bench;
    bench.goTo(Step::ChooseImage);
    const QByteArray good = samples::content(samples::messages());
    const int size = hx::saturated(good.size());
    for (int place = 0; place < size; place += size / 16) {
        QByteArray damaged = good;
        damaged[place] = char(damaged.at(place) ^ 1);
        EXPECT_NE(bench.faultOf(damaged), ImageFault::None) << place;
        EXPECT_NE(bench.faultOf(good.left(place)), ImageFault::None) << place;
    }
    EXPECT_EQ(bench.faultOf(good), ImageFault::None);
}

TEST(TakenFiles, WithoutAProductTheFileIsHeldAgainstThePluginsThatThereAre)
{
    FileBench bench;
    EXPECT_EQ(bench.faultOf(samples::content(samples::messages())), ImageFault::None);
    EXPECT_EQ(bench.faultOf(samples::content(messagesForOtherModel())), ImageFault::OtherProduct);
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(TakenFiles, WithoutAPluginNothingCanBeChecked)
{
    Bench bench(QStringLiteral("/no/such/folder"));
    bench.model->takeFile(bench.files.path("any.syx"));
    ASSERT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    EXPECT_EQ(bench.model->image().fault, ImageFault::NoPlugin);
    EXPECT_FALSE(bench.model->image().problems.first().isEmpty());
}

TEST(TakenFiles, EachNoticeNamesTheFile)
{
    FileBench bench;
    bench.take(bench.image());
    ASSERT_TRUE(waitUntil([&] { return bench.notices.size() == 1; }));
    EXPECT_EQ(bench.notices.last(), Notice::ImageKept);
    EXPECT_EQ(bench.noticed, "1.0.2.4.syx");
    bench.take(bench.files.write("bad.syx", {}));
    ASSERT_TRUE(waitUntil([&] { return bench.notices.size() == 2; }));
    EXPECT_EQ(bench.notices.last(), Notice::ImageBad);
    EXPECT_EQ(bench.noticed, "bad.syx");
}

TEST(TakenFiles, AGoodFileAfterABadOneIsUsed)
{
    FileBench bench;
    bench.goTo(Step::ChooseImage);
    bench.faultOf({});
    bench.model->takeFile(bench.image());
    EXPECT_TRUE(bench.isAt(Step::Review));
}

TEST(TakenFiles, ABadFileThatWasKeptIsToldOnceAProductIsThere)
{
    FileBench bench;
    bench.faultOf("<html>");
    bench.goTo(Step::ChooseImage);
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().fault == ImageFault::WebPage; }));
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
}

TEST(TakenFiles, NamesThatAreNotUtf8AreReadToo)
{
    FileBench bench;
    SKIP_WHERE_NAMES_ARE_TEXT(bench.files.folder().toStdString());
    const QString name = hx::fileNameText((bench.files.folder() + "/r").toStdString() + "\xE9.syx");
    ASSERT_TRUE(bool(hx::writeWholeFile(name, samples::content(samples::messages()))));
    EXPECT_EQ(bench.take(name).fault, ImageFault::None);
    std::filesystem::remove(hx::filePath(name)); // which Qt cannot
}

TEST(TakenFiles, HexTextAndStandardMidiFilesAreImagesToo)
{
    FileBench bench;
    bench.goTo(Step::ChooseImage);
    EXPECT_EQ(bench.faultOf(samples::content(samples::messages()).toHex(' ')), ImageFault::None);
    EXPECT_EQ(bench.model->image().messages, samples::messages().size());
}

TEST(TakenFiles, ATraceOfADamagedFileNamesTheLine)
{
    Bench bench;
    bench.model->takeFile(bench.files.write("mail.trace", "# hxtrace 1\n0.000000 sent F0F7\n\x01"));
    ASSERT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    EXPECT_EQ(bench.notices.last(), Notice::TraceBad);
    EXPECT_TRUE(bench.noticed.startsWith("mail.trace:")) << bench.noticed.toStdString();
}
