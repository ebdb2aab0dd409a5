#include "platform/linux/text/child_answer.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace amperly {
namespace {

TEST(ChildAnswerTest, TheChildsTextComesBack)
{
    EXPECT_EQ(answerOfChild([] { return std::optional<std::string>("some text"); }), "some text");
}

TEST(ChildAnswerTest, ALongTextComesBackWhole)
{
    const std::string text(300'000, 'x');
    EXPECT_EQ(answerOfChild([&] { return std::optional(text); }), text);
}

TEST(ChildAnswerTest, AnEmptyTextIsAnAnswerAndNothingIsNone)
{
    EXPECT_EQ(answerOfChild([] { return std::optional<std::string>(""); }), "");
    EXPECT_EQ(answerOfChild([] { return std::optional<std::string>(); }), std::nullopt);
}

TEST(ChildAnswerTest, AChildThatDiesAnswersNothing)
{
    EXPECT_EQ(answerOfChild([]() -> std::optional<std::string> {
        std::signal(SIGABRT, SIG_DFL);
        raise(SIGKILL);
        return "never";
    }),
        std::nullopt);
}

TEST(ChildAnswerTest, WhatTheChildDoesToMemoryStaysThere)
{
    int touched = 0;
    EXPECT_EQ(answerOfChild([&] {
        touched = 1;
        return std::optional<std::string>("done");
    }),
        "done");
    EXPECT_EQ(touched, 0);
}

TEST(ChildAnswerTest, NoChildIsLeftBehind)
{
    EXPECT_TRUE(answerOfChild([] { return std::optional<std::string>("done"); }));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

} // namespace
} // namespace amperly
