#include "protocol/reply.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace
{

struct Reply {
    const char* name;
    const char* text;
    bool success;
};

void PrintTo(const Reply& reply, std::ostream* out)
{
    *out << reply.name;
}

class ReplyJudgement : public testing::TestWithParam<Reply>
{};

TEST_P(ReplyJudgement, LooksForAOneRightAfterTheFirstTag)
{
    EXPECT_EQ(find_return_code(GetParam().text), GetParam().success);
}

INSTANTIATE_TEST_SUITE_P(
    All, ReplyJudgement,
    testing::Values(
        Reply{"null", nullptr, false}, Reply{"empty", "", false},
        Reply{"no_tag", "<int>1</int>", false}, Reply{"other_case", "<Boolean>1</Boolean>", false},
        Reply{"cut_tag", "<boolean", false}, Reply{"one", "<boolean>1</boolean>", true},
        Reply{"zero", "<boolean>0</boolean>", false}, Reply{"tag_at_end", "<boolean>", false},
        Reply{"one_at_end", "<boolean>1", true},
        Reply{"one_before_the_tag", "1<boolean>0</boolean>", false},
        Reply{"last_of_the_span", "<boolean>          1", true},
        Reply{"first_beyond_the_span", "<boolean>           1", false},
        Reply{"far_beyond_the_span", "<boolean>0</boolean></value>1", false},
        Reply{"in_the_markup_after_it", "<boolean>0</b1>", true},
        Reply{"second_tag", "<boolean>0</boolean><boolean>1</boolean>", false},
        Reply{"second_tag_within_the_span", "<boolean><boolean>1", true},
        Reply{"number_with_a_one", "<boolean>21</boolean>", true},
        Reply{"whole_document",
              "<?xml version=\"1.0\"?><methodResponse><params><param><value><boolean>1</boolean>"
              "</value></param></params></methodResponse>\n",
              true}));

TEST(ReplyJudgementOfALongText, FindsATagThatStandsFarFromTheBeginning)
{
    const std::string text = std::string(1000, '1') + "<boolean>1</boolean>";
    EXPECT_TRUE(find_return_code(text.c_str()));
}

} // namespace
