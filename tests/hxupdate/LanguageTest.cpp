// The texts in every language: all there, with the same places to fill, and none cut.
#include "tests/hxupdate/Looks.h"
#include "tests/hxupdate/Scenes.h"

#include "apps/hxupdate/window/Language.h"
#include "apps/hxupdate/words/ConditionWords.h"
#include "apps/hxupdate/words/ConnectWords.h"
#include "apps/hxupdate/words/EndingWords.h"
#include "apps/hxupdate/words/ImageWords.h"
#include "apps/hxupdate/words/NoticeWords.h"
#include "apps/hxupdate/words/Units.h"

#include <QApplication>
#include <QRegularExpression>
#include <QScrollArea>
#include <QSet>

using namespace hxupdate;

namespace {

const QStringList languages = {"de_DE", "fr_FR", "es_ES"};

// As long as it lives the program speaks this language, and then English again.
class Speaking {
public:
    explicit Speaking(const QString& language) { speak(*qApp, QLocale(language)); }
    ~Speaking() { speak(*qApp, QLocale("en_US")); }
};

Connection connectionWith(Finding finding)
{
    Connection connection;
    connection.finding = finding;
    connection.products << ProductFacts{0, "Valdrin", {}, {}, {}, false};
    return connection;
}

QList<Advice> allAdvice()
{
    QList<Advice> all;
    for (int finding = 0; finding <= int(lastFinding); ++finding)
        all << adviceOf(connectionWith(Finding(finding)));
    for (int fault = 0; fault <= int(lastImageFault); ++fault)
        all << adviceOf(ImageFault(fault), "Valdrin");
    for (int ending = 0; ending <= int(lastEnding); ++ending)
        all << adviceOf(Ending(ending), "Valdrin");
    return all;
}

void expectTranslated(const Advice& advice, const Advice& english)
{
    EXPECT_NE(advice.title, english.title);
    EXPECT_NE(advice.sentence, english.sentence);
    ASSERT_EQ(advice.steps.size(), english.steps.size());
    for (int i = 0; i < advice.steps.size(); ++i)
        EXPECT_NE(advice.steps.at(i), english.steps.at(i));
}

void expectNothingCut(const UpdateWindow& window)
{
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty())
            continue;
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->text().toStdString();
        EXPECT_GE(label->width(), label->minimumSizeHint().width()) << label->text().toStdString();
    }
    for (const QPushButton* button : window.findChildren<QPushButton*>()) {
        EXPECT_TRUE(!button->isVisible() || button->width() >= button->minimumSizeHint().width())
            << button->text().toStdString();
    }
    for (const QScrollArea* area : window.findChildren<QScrollArea*>()) {
        EXPECT_TRUE(!area->isVisible() || area->widget()->width() <= area->viewport()->width());
    }
    EXPECT_LE(window.width(), 1024);
}

void expectNothingCutOnAnyPage()
{
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        WindowBench bench(true);
        scene.bringAbout(bench);
        bench.settle();
        expectNothingCut(bench.window);
        endScene(bench);
    }
}

QStringList placesOf(const QString& text)
{
    QStringList places;
    QRegularExpressionMatchIterator matches = QRegularExpression("%[1-9n]").globalMatch(text);
    while (matches.hasNext())
        places << matches.next().captured();
    places.sort();
    return places;
}

QStringList captured(const QString& text, const QString& pattern)
{
    QStringList found;
    QRegularExpressionMatchIterator matches =
        QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption)
            .globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

} // namespace

TEST(Language, EveryFindingFaultAndEndingHasTitleSentenceAndStepsInEveryLanguage)
{
    const QList<Advice> english = allAdvice();
    for (const QString& language : languages) {
        const Speaking speaking(language);
        const QList<Advice> all = allAdvice();
        for (int i = 0; i < all.size(); ++i) {
            SCOPED_TRACE((language + ' ' + english.at(i).title).toStdString());
            EXPECT_FALSE(english.at(i).title.isEmpty());
            EXPECT_FALSE(english.at(i).sentence.isEmpty());
            EXPECT_EQ(english.at(i).steps.isEmpty(), i == int(Finding::Searching));
            expectTranslated(all.at(i), english.at(i));
        }
    }
}

TEST(Language, EveryNoticeIsTranslated)
{
    for (const QString& language : languages) {
        for (int notice = 1; notice <= int(lastNotice); ++notice) {
            const QString english = noticeText(Notice(notice), "detail");
            const Speaking speaking(language);
            EXPECT_NE(noticeText(Notice(notice), "detail"), english) << language.toStdString();
        }
    }
    EXPECT_EQ(noticeText(Notice::None, {}), QString());
}

TEST(Language, EveryConditionOfAProductIsTranslatedAndHasWordsOfItsOwn)
{
    const int last = int(hx::ProductCondition::Unclear);
    for (const QString& language : languages) {
        QSet<QString> texts;
        for (int condition = 0; condition <= last; ++condition) {
            const QString english = conditionText(hx::ProductCondition(condition));
            const Speaking speaking(language);
            const QString text = conditionText(hx::ProductCondition(condition));
            EXPECT_NE(text, english) << language.toStdString();
            texts << text;
        }
        EXPECT_EQ(texts.size(), last + 1) << language.toStdString();
    }
}

TEST(Language, EveryChangeIsTranslatedAndTheProductIsNamed)
{
    for (const QString& language : languages) {
        for (const Change change :
             {Change::Upgrade, Change::Downgrade, Change::Reinstall, Change::Recover}) {
            const QString english = changeText(change);
            const QString verb = verbText(change, "Valdrin");
            const Speaking speaking(language);
            EXPECT_NE(changeText(change), english) << language.toStdString();
            EXPECT_NE(verbText(change, "Valdrin"), verb) << language.toStdString();
            EXPECT_TRUE(verbText(change, "Valdrin").contains("Valdrin"));
        }
    }
}

TEST(Language, NoTwoTitlesOfEndingsAreMixedUp)
{
    for (const QString& language : languages) {
        const Speaking speaking(language);
        QSet<QString> told;
        for (int ending = 0; ending <= int(lastEnding); ++ending) {
            const Advice advice = adviceOf(Ending(ending), "Valdrin");
            told << advice.title + advice.sentence;
        }
        EXPECT_EQ(told.size(), int(lastEnding) + 1) << language.toStdString();
    }
}

TEST(Language, EveryTextIsTranslatedAndHasTheSamePlacesToFill)
{
    for (const QString& language : languages) {
        const QString path = QString(HX_TRANSLATIONS "/hxupdate_%1.ts").arg(language.left(2));
        const QString content = QString::fromUtf8(TestFiles::contentOf(path));
        const QStringList messages = captured(content, "<message[^>]*>(.*?)</message>");
        EXPECT_GT(messages.size(), 150);
        for (const QString& message : messages) {
            EXPECT_FALSE(message.contains("type=\"")) << message.toStdString();
            const QString source = captured(message, "<source>(.*?)</source>").value(0);
            QStringList texts = captured(message, "<numerusform>(.*?)</numerusform>");
            if (texts.isEmpty())
                texts = captured(message, "<translation>(.*?)</translation>");
            EXPECT_FALSE(texts.isEmpty()) << message.toStdString();
            for (const QString& text : texts) {
                EXPECT_FALSE(text.isEmpty()) << source.toStdString();
                EXPECT_EQ(placesOf(text), placesOf(source)) << text.toStdString();
                EXPECT_EQ(text.contains("&amp;"), source.contains("&amp;")) << text.toStdString();
            }
        }
    }
}

TEST(Language, PluralsAndNumbersFollowTheLanguage)
{
    EXPECT_EQ(durationText(0), "1 second");
    EXPECT_EQ(durationText(1000001), "2 seconds");
    EXPECT_EQ(durationText(119000000), "119 seconds");
    EXPECT_EQ(durationText(120000000), "2 minutes");
    EXPECT_EQ(durationText(120000001), "3 minutes");
    EXPECT_EQ(sizeText(65536), "65.5 kB");
    const Speaking speaking("de_DE");
    EXPECT_EQ(durationText(1000000), "1 Sekunde");
    EXPECT_EQ(durationText(600000000), "10 Minuten");
    EXPECT_EQ(sizeText(65536), "65,5 kB");
}

TEST(Language, AnUnknownLanguageIsEnglish)
{
    const Speaking speaking("fi_FI");
    EXPECT_EQ(durationText(2000000), "2 seconds");
}

TEST(Language, AnAmpersandInAProductsNameIsNoMnemonic)
{
    EXPECT_EQ(verbText(Change::Upgrade, "Bass & Drums"), "&Upgrade Bass && Drums");
    EXPECT_EQ(verbText(Change::Downgrade, "X"), "&Downgrade X");
    EXPECT_EQ(verbText(Change::Reinstall, "X"), "&Reinstall X");
    EXPECT_EQ(verbText(Change::Recover, "X"), "&Recover X");
}

TEST(Language, MnemonicsAreDistinctInEveryLanguage)
{
    for (const QString& language : languages) {
        const Speaking speaking(language);
        for (const Scene& scene : scenes()) {
            SCOPED_TRACE((language + ' ' + scene.name).toStdString());
            WindowBench bench;
            scene.bringAbout(bench);
            QStringList letters;
            for (const QPushButton* button : bench.window.findChildren<QPushButton*>()) {
                if (button->isVisible())
                    letters << button->shortcut().toString();
            }
            EXPECT_FALSE(letters.contains(QString()));
            EXPECT_EQ(letters.removeDuplicates(), 0) << letters.join(' ').toStdString();
            endScene(bench);
        }
    }
}

TEST(Language, NothingIsCut)
{
    expectNothingCutOnAnyPage();
}

TEST(Language, NothingIsCutAtTwiceTheFontSize)
{
    const LargeFont large;
    for (const QString& language : languages) {
        SCOPED_TRACE(language.toStdString());
        const Speaking speaking(language);
        expectNothingCutOnAnyPage();
    }
}

TEST(Language, NothingIsCutInALanguageThatIsMuchLonger)
{
    const LargeFont large;
    const LongTexts longTexts;
    expectNothingCutOnAnyPage();
}
