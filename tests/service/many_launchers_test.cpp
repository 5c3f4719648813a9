// Many launchers at once against one service.
#include "protocol/wire_names.h"
#include "tests/service/service_process.h"

#include <list>

namespace
{

class ManyLaunchers : public ServiceProcess
{
  protected:
    /** Runs `count` launchers at once, every third of which must fail. */
    void run_at_once(int count)
    {
        std::list<Program> launchers;
        for (int i = 0; i < count; ++i)
            launchers.emplace_back(launcher({"a", i % 3 == 0 ? "bad" : "b"})).start();
        int i = 0;
        for (Program& program : launchers) {
            EXPECT_EQ(program.wait(), i % 3 == 0 ? silent_failure : success) << "launcher " << i;
            ++i;
        }
    }
};

TEST_F(ManyLaunchers, FiftyAtOnceAreAllAnsweredAndLeaveNothingBehind)
{
    start_service();

    run_at_once(50);

    EXPECT_EQ(scratch.user_listing(), files_of_service());
}

} // namespace
