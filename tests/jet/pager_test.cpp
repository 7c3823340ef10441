#include <gtest/gtest.h>

#include "jet/error.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;

TEST(Pager, WritesAndReadsBackPagesThroughATransaction) {
    testsupport::TempDir dir;
    std::string path = (dir / "p.mdb").string();
    {
        auto p = Pager::create(path);
        p->begin();
        uint32_t a = p->append(), b = p->append();
        p->modify(a)[0] = 7;
        p->modify(b)[4095] = 9;
        p->commit();
    }
    auto p = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_EQ(p->pageCount(), 2u);
    EXPECT_EQ(p->page(0)->bytes[0], 7);
    EXPECT_EQ(p->page(1)->bytes[4095], 9);
    EXPECT_THROW(p->page(2), JetError);
    EXPECT_THROW(p->begin(), JetError);
}
