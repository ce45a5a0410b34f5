// The users' lists' search: a row counts when its text begins with the searched text as a whole word,
// case ignored. The walk over the list and the index an import keeps must always agree.
#include "testing/ScriptedPlatform.h"
#include "ui/ListFind.h"
#include "ui/ListView.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace hv::ui;

struct Case {
    const char* text;
    const char* searched;
    bool found;
};

// clang-format off
const Case kCases[] = {
    {"Bob Jones", "bob", true}, {"Bob Jones", "BOB JONES", true}, {"Bob Jones", "bob jones", true},
    {"Bob Jones", "bo", false}, {"Bob Jones", "bobby", false}, {"Bob Jones", "Bob J", false},
    {"Bob Jones", "Bob Jo", false}, {"Bob Jones", "bob ", true}, {"Bob Jones", "jones", false},
    {"Bob", "bob", true}, {"bob.smith", "bob", true}, {"bob-smith", "BOB-", true}, {"john_smith", "john", false},
    {"USER10", "user1", false}, {"USER1", "user1", true}, {"Åsa Berg", "åsa", true}, {"Bob", "", false},
    {"", "", false}, {" Dave", " dave", true}, {" Dave", "dave", false},
};
// clang-format on

TEST(KitListFind, WholeWordBeginningsAgreeAcrossTheWalkAndTheIndex) {
    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    for (const Case& c : kCases) {
        SCOPED_TRACE(std::string(c.text) + " / " + c.searched);
        const QString text = QString::fromUtf8(c.text);
        const QString searched = QString::fromUtf8(c.searched);
        EXPECT_EQ(Begins_With_Whole_Word(text, searched), c.found);

        ListView list("lvwUsers", ListView::Report, nullptr);
        list.Add(u"[All Users...]"_s);
        list.Add(text);
        EXPECT_EQ(Find_Whole_Word(list, searched), c.found ? 2 : 0);

        WholeWordIndex index;
        index.Add_All(list);
        EXPECT_EQ(index.Contains(searched), c.found);
    }
}

TEST(KitListFind, TheFirstMatchingRowIsFoundAndTheIndexLearnsAddedTexts) {
    hv::ScriptedPlatform world;
    hv::PlatformScope scope{world};
    ListView list("lvwUsers", ListView::Report, nullptr);
    for (const char* t : {"bobby", "Bob Jones", "bob"})
        list.Add(QLatin1String(t));
    EXPECT_EQ(Find_Whole_Word(list, u"BOB"_s), 2);

    WholeWordIndex index;
    EXPECT_FALSE(index.Contains(u"ann"_s));
    index.Add(u"ANN LEE"_s);
    EXPECT_TRUE(index.Contains(u"ann"_s));
    EXPECT_FALSE(index.Contains(u"an"_s));
}

} // namespace
