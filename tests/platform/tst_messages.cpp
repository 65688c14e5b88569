#include "platform/messages.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <atomic>
#include <thread>
#include <vector>

using namespace drivewiz;

namespace {

struct Received
{
    uint msg;
    quintptr wParam;
    qintptr lParam;
};

// Delivers posted events until the predicate holds or a few seconds have passed.
template <typename Pred> bool processUntil(Pred done)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}

class CountingWindow : public MessageWindow
{
public:
    std::vector<Received> received;

protected:
    void handleMessage(uint msg, quintptr wParam, qintptr lParam) override
    {
        received.push_back({msg, wParam, lParam});
    }
};

} // namespace

TEST(MessageWindow, ProtocolNumbersAreFixed)
{
    EXPECT_EQ(WM_USER, 1024u);
    EXPECT_EQ(wmParaChanged, 1025u);
    EXPECT_EQ(wmOnlineChanged, 1027u);
    EXPECT_EQ(wmToolMessage, 32774u);
    EXPECT_EQ(wmToolOnlineMode, 32775u);
}

TEST(MessageWindow, APostedMessageArrivesLaterWithItsParameters)
{
    MessageWindow window;
    std::vector<Received> got;
    window.onMessage = [&](uint m, quintptr w, qintptr l) { got.push_back({m, w, l}); };
    ASSERT_NE(window.handle(), 0u);
    EXPECT_TRUE(PostMessage(window.handle(), wmToolMessage, 0x01E08005u, -1));
    EXPECT_TRUE(got.empty()); // posted, not sent
    QCoreApplication::sendPostedEvents(&window);
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].msg, wmToolMessage);
    EXPECT_EQ(got[0].wParam, 0x01E08005u);
    EXPECT_EQ(got[0].lParam, -1);
}

TEST(MessageWindow, HandlesAreUniqueAndNeverReused)
{
    quintptr old = 0;
    {
        MessageWindow a;
        MessageWindow b;
        EXPECT_NE(a.handle(), b.handle());
        old = a.handle();
    }
    MessageWindow c;
    EXPECT_NE(c.handle(), old);
    EXPECT_FALSE(PostMessage(old, wmOnlineChanged, 1, 0));
    EXPECT_FALSE(PostMessage(quintptr(0), wmOnlineChanged, 1, 0));
}

TEST(MessageWindow, ClosingTheHandleDropsQueuedMessages)
{
    CountingWindow window;
    const quintptr h = window.handle();
    EXPECT_TRUE(PostMessage(h, wmParaChanged, 1, 0));
    window.closeHandle();
    EXPECT_EQ(window.handle(), 0u);
    EXPECT_FALSE(PostMessage(h, wmParaChanged, 2, 0));
    QCoreApplication::sendPostedEvents(&window);
    EXPECT_TRUE(window.received.empty());
}

TEST(MessageWindow, PostingToAnObjectUsesTheSameEvent)
{
    CountingWindow window;
    EXPECT_TRUE(PostMessage(&window, wmOnlineChanged, 2, 0));
    EXPECT_FALSE(PostMessage(static_cast<QObject *>(nullptr), wmOnlineChanged, 2, 0));
    QCoreApplication::sendPostedEvents(&window);
    ASSERT_EQ(window.received.size(), 1u);
    EXPECT_EQ(window.received[0].wParam, 2u);
}

TEST(MessageWindow, ManyPostsFromAnotherThreadArriveInOrder)
{
    CountingWindow window;
    constexpr int count = 100000;
    const quintptr h = window.handle();
    std::atomic<int> failed{0};
    std::thread poster([&] {
        for (int i = 0; i < count; ++i)
            if (!PostMessage(h, wmToolMessage, quintptr(i), 1)) ++failed;
    });
    poster.join();
    ASSERT_TRUE(processUntil([&] { return window.received.size() >= std::size_t(count); }));
    EXPECT_EQ(failed.load(), 0);
    ASSERT_EQ(window.received.size(), std::size_t(count));
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(window.received[std::size_t(i)].wParam, quintptr(i));
}

TEST(MessageWindow, PostsRacingWithDestructionAreSafe)
{
    for (int round = 0; round < 50; ++round) {
        auto *window = new CountingWindow;
        const quintptr h = window->handle();
        std::atomic<bool> started{false};
        std::atomic<int> afterDeath{0};
        std::atomic<bool> dead{false};
        std::thread poster([&] {
            for (int i = 0; i < 5000; ++i) {
                const bool wasDead = dead.load();
                started = true;
                if (PostMessage(h, wmToolMessage, quintptr(i), 1) && wasDead) ++afterDeath;
            }
        });
        while (!started)
            std::this_thread::yield();
        if (round % 2) QCoreApplication::processEvents();
        delete window;
        dead = true;
        poster.join();
        EXPECT_EQ(afterDeath.load(), 0);
        EXPECT_FALSE(PostMessage(h, wmToolMessage, 0, 1));
    }
    QCoreApplication::processEvents(); // nothing left to deliver to the deleted windows
}
