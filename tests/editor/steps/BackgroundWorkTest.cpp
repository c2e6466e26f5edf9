#include "editor/steps/BackgroundWork.h"

#include "support/MessageRecorder.h"
#include "support/Patience.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using editor::BackgroundWork;
using editor::StepControl;

namespace {

void WaitUntilIdle(const BackgroundWork& work)
{
    test::WaitInLoopFor(u"the end of the work"_s, [&] { return !work.IsBusy(); });
}

} // namespace

TEST(BackgroundWork, IsDoneOnAnotherThreadAndTakenOverOnThatOfTheWindows)
{
    BackgroundWork work;
    std::atomic<QThread*> worker = nullptr;
    QThread* taker = nullptr;
    work.Start([&](StepControl&) {
        worker = QThread::currentThread();
        return [&] { taker = QThread::currentThread(); };
    });
    EXPECT_TRUE(work.IsBusy());
    WaitUntilIdle(work);
    EXPECT_NE(worker.load(), nullptr);
    EXPECT_NE(worker.load(), QThread::currentThread());
    EXPECT_EQ(taker, QThread::currentThread());
}

TEST(BackgroundWork, OnlyTheNewestOutcomeCounts)
{
    BackgroundWork work;
    QSemaphore go;
    std::vector<int> taken;
    std::atomic<int> begun = 0;
    for (int i = 0; i < 3; ++i)
        work.Start([&, i](StepControl&) {
            ++begun;
            go.acquire();
            return [&, i] { taken.push_back(i); };
        });
    go.release(3);
    WaitUntilIdle(work);
    EXPECT_EQ(taken, std::vector{2});
    EXPECT_EQ(begun.load(), 2); // the one in between was not even begun
}

TEST(BackgroundWork, WorkThatIsReplacedHearsThatItIsCancelled)
{
    BackgroundWork work;
    QSemaphore begun;
    bool isTaken = false;
    work.Start([&](StepControl& control) -> BackgroundWork::Outcome {
        begun.release();
        test::WaitFor(u"the cancelling"_s, [&] { return control.IsCancelled(); });
        control.Check();
        return [&] { ADD_FAILURE() << "the former work was taken over"; };
    });
    begun.acquire();
    work.Start([&](StepControl&) { return [&] { isTaken = true; }; });
    WaitUntilIdle(work);
    EXPECT_TRUE(isTaken);
}

TEST(BackgroundWork, NothingComesOfWorkThatIsLeft)
{
    BackgroundWork work;
    QSemaphore go;
    work.Start([&](StepControl&) {
        go.acquire();
        return [&] { ADD_FAILURE() << "the work was taken over"; };
    });
    work.Leave();
    EXPECT_FALSE(work.IsBusy());
    go.release();
    bool isTaken = false;
    work.Start([&](StepControl&) { return [&] { isTaken = true; }; });
    WaitUntilIdle(work);
    EXPECT_TRUE(isTaken);
}

TEST(BackgroundWork, ItsEndWaitsForTheWorkAndTakesNothingOver)
{
    std::atomic<bool> isEnded = false;
    {
        BackgroundWork work;
        QSemaphore begun;
        work.Start([&](StepControl& control) -> BackgroundWork::Outcome {
            begun.release();
            test::WaitFor(u"the end"_s, [&] { return control.IsCancelled(); });
            isEnded = true;
            return [] { ADD_FAILURE() << "the work was taken over"; };
        });
        begun.acquire();
    }
    EXPECT_TRUE(isEnded.load());
    QCoreApplication::processEvents();
}

TEST(BackgroundWork, WhatTheWorkRaisesIsShown)
{
    test::MessageRecorder messages;
    BackgroundWork work;
    work.Start([](StepControl&) -> BackgroundWork::Outcome { throw std::runtime_error("broken"); });
    WaitUntilIdle(work);
    test::WaitInLoopFor(u"the message"_s, [&] { return !messages.Texts().isEmpty(); });
    EXPECT_TRUE(messages.Texts().first().contains(u"broken"_s));
}

TEST(BackgroundWork, AnOutcomeMayAskForTheNextWork)
{
    BackgroundWork work;
    int done = 0;
    work.Start([&](StepControl&) {
        return [&] {
            ++done;
            work.Start([&](StepControl&) { return [&] { ++done; }; });
        };
    });
    WaitUntilIdle(work);
    EXPECT_EQ(done, 2);
}
