#include "lang/wizDLLDefs.h"
#include "support/testing.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

using namespace drivewiz;

namespace {

// What the fake host answers: the length it announces, the bytes it writes (copied as
// they are, at most `size`), and what it returns on the second call.
struct FakeHost
{
    int32_t announced = 0;
    QByteArray written;
    int32_t secondAnswer = 0;
    std::vector<int32_t> sizes; // the size argument of every call
};
FakeHost g_host;

int32_t fakeErrorText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address, uint8_t code)
{
    g_host.sizes.push_back(size);
    EXPECT_EQ(wizardId, 7u);
    EXPECT_EQ(address, 0x42084004u);
    EXPECT_EQ(code, 5);
    if (!buffer) return g_host.announced;
    std::memcpy(buffer, g_host.written.constData(),
                size_t(std::min<qsizetype>(g_host.written.size(), size)));
    return g_host.secondAnswer;
}

const QString kReport = QStringLiteral("Error at: \rModul:  TParaTable.PostParaControl\r"
                                       "Koord:  2.B33.4\rAdr:    1107836932\rErrCode:5\r");

} // namespace

class CheckErrCodeTest : public testing::Test
{
protected:
    void SetUp() override { g_host = FakeHost(); }
    // Runs CheckErrCode with the fake host and returns the one message shown.
    QString report(fcbtGetErrorText callback = fakeErrorText)
    {
        EXPECT_FALSE(
            CheckErrCode(7, 5, "TParaTable.PostParaControl", callback, 0x42084004u, "2.B33.4"));
        const auto &entries = test::recorder().entries();
        EXPECT_EQ(entries.size(), 1u);
        if (entries.empty()) return QString();
        EXPECT_EQ(entries.back().type, MsgDlgType::Error);
        EXPECT_EQ(entries.back().buttons, MsgDlgButtons(mbOK));
        return entries.back().text;
    }
};

TEST_F(CheckErrCodeTest, CodeZeroIsSilentSuccess)
{
    EXPECT_TRUE(CheckErrCode(7, 0, "fcbtGetParaValue", fakeErrorText, 1, "A00"));
    EXPECT_TRUE(test::recorder().entries().empty());
    EXPECT_TRUE(g_host.sizes.empty());
}

TEST_F(CheckErrCodeTest, WithoutCallbackTheReportEndsWithTheCode)
{
    EXPECT_EQ(report(nullptr), kReport);
}

TEST_F(CheckErrCodeTest, HostTextIsAskedForLengthThenAppended)
{
    g_host.announced = 13;
    g_host.written = QByteArray("Überspannung") + '\0'; // 13 bytes of UTF-8
    g_host.secondAnswer = 13;
    EXPECT_EQ(report(), kReport + "Überspannung");
    EXPECT_EQ(g_host.sizes, (std::vector<int32_t>{0, 14}));
}

TEST_F(CheckErrCodeTest, HostileHostsCannotBreakTheReport)
{
    struct Case
    {
        int32_t announced;
        QByteArray written;
        int32_t secondAnswer;
        QString appended;
    };
    const Case cases[] = {
        {-1, "never asked", 0, ""}, // negative length
        {20, "kurz", 20, "kurz"},   // fewer bytes than announced, no zero
        {3, "abcdefgh", 3, "abcd"}, // more bytes than announced, no zero
        {8,
         "\xDC"
         "berlast",
         8, "Überlast"},                    // Windows-1252, not UTF-8
        {5, "fehl", -2, ""},                // second call fails
        {5, QByteArray("a\0b", 3), 3, "a"}, // zero inside the text
        {std::numeric_limits<int32_t>::max(), "riesig", 6, "riesig"},
    };
    for (const Case &c : cases) {
        SetUp();
        test::recorder().clear();
        g_host.announced = c.announced;
        g_host.written = c.written;
        g_host.secondAnswer = c.secondAnswer;
        EXPECT_EQ(report(), kReport + c.appended) << c.written.constData();
        for (int32_t size : g_host.sizes)
            EXPECT_LE(size, 64 * 1024 + 1);
    }
}
