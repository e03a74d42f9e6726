// The session sets the engine's roots and takes them back.
#include <gtest/gtest.h>

#include "memory/HostSession.h"

namespace caretwell {
namespace {

TEST(HostSession, RootsFollowTheSession) {
    for (int round = 0; round < 3; ++round) {
        THostSession host({.SettingsFile = "/nonexistent"});
        EXPECT_EQ(GlobalKibitzManager(), &host.Registry());
        TDocument& page = host.Open("a\nbc", "page.html");
        auto services = GetService<INibCodeInsightServices>();
        ASSERT_TRUE(services);
        EXPECT_TRUE(services->CurrentEditView() == static_cast<INibEditView*>(&page.View()));
    }
    EXPECT_EQ(TarnwellIDEServices(), nullptr);
    EXPECT_EQ(GlobalKibitzManager(), nullptr);
}

}  // namespace
}  // namespace caretwell
