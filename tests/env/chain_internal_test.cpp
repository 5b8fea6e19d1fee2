// The master seen from inside: callers never hold it.

#include "env/chain.h"

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

using orvix::gsl::env::chain;
using orvix::test::setting;
using orvix::test::TempSite;

TEST(Chain, BeginsWithTheMaster) {
    const TempSite site;
    EXPECT_EQ(chain.master, nullptr);
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    EXPECT_EQ(chain.master->next, env);
    EXPECT_EQ(chain.last, env);
    EXPECT_EQ(env->next, nullptr);
}

TEST(Chain, ClosedEnvironmentsLeaveIt) {
    const TempSite site;
    eeEnv* first = gui_env_open("a", ENVLOC_ANY);
    eeEnv* second = gui_env_open("b", ENVLOC_ANY);
    gui_env_close(first, false);
    EXPECT_EQ(chain.master->next, second);
    gui_env_close(second, false);
    EXPECT_EQ(chain.last, chain.master);
    EXPECT_EQ(chain.master->next, nullptr);
}

TEST(ClosedMaster, IsSavedAndEmptiedAndStaysUsable) {
    const TempSite site;
    gui_env_put_ee("A", "1", ENVLOC_CWD);
    eeEnv* master = chain.master;
    EXPECT_TRUE(gui_env_close(master, true));
    EXPECT_EQ(site.read("work/hxorvix.cfg"), "A=1\n");
    EXPECT_EQ(chain.master, master);
    EXPECT_EQ(gui_env_get_ee("A", nullptr, nullptr, 0, ENVLOC_ANY), -1);
    EXPECT_TRUE(gui_env_put_ee("B", "2", ENVLOC_ANY));
    EXPECT_EQ(setting(master, "B"), "2");
}

TEST(ClosedMaster, LeavesTheOthersOpen) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    gui_env_close(chain.master, false);
    EXPECT_EQ(chain.last, env);
    EXPECT_TRUE(gui_env_close(env, true));
    EXPECT_EQ(site.read("work/demo.cfg"), "A=1\n");
}

TEST(Deinit, LeavesNothingOpen) {
    const TempSite site;
    gui_env_init();
    gui_env_deinit(false);
    EXPECT_EQ(chain.master, nullptr);
    EXPECT_EQ(chain.last, nullptr);
    gui_env_open("demo", ENVLOC_ANY);
    gui_env_deinit(false);
    EXPECT_EQ(chain.master, nullptr);
    EXPECT_EQ(chain.last, nullptr);
}

TEST(Deinit, DroppedMasterKeepsItsEntries) {
    const TempSite site;
    gui_env_put_ee("A", "1", ENVLOC_ANY);
    eeEnv* master = chain.master;
    gui_env_open("demo", ENVLOC_ANY);
    gui_env_deinit(false);
    EXPECT_EQ(setting(master, "A"), "1");
}
