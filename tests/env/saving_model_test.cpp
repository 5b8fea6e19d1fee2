// Random files and random changes, saved and compared byte for byte with a plain model.

#include "env/saving_model.h"

#include "support/random_text.h"
#include "support/temp_site.h"
#include "support/temporary_place.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;

using orvix::test::entries_of;
using orvix::test::RandomText;
using orvix::test::saved_file;
using orvix::test::ScopedVariable;
using orvix::test::temporary_place;
using orvix::test::TempSite;

namespace {

constexpr const char* file = "work/model.cfg";

std::string random_name(RandomText& random) {
    if (random.number(30) == 0) return std::string(60 + random.number(6), 'k');
    return random.text("abAB", 2);
}

std::string random_line(RandomText& random) {
    switch (random.number(12)) {
        case 0:
            return "#" + random.text("a= ", 5);
        case 1:
            return "//" + random.text("a= ", 3);
        case 2:
            return "+ " + random.text("a#=", 3);
        case 3:
            return random.text(" \t", 3);
        case 4:
            return random.text("ab= #/+\t", 8);
        case 5:
            return random.number(10) == 0 ? "B=" + random.text("xy", 9000) : "";
        default:
            return random.text(" ", 1) + random_name(random) + random.text(" \t", 1) + "=" + random.text(" \t", 1) +
                   random.text("xyz #=", 6);
    }
}

std::string random_file(RandomText& random) {
    std::string bytes;
    for (std::size_t lines = random.number(12); lines > 0; --lines) {
        bytes += random_line(random);
        if (random.number(40) == 0) bytes += '\0' + random.text("ab=", 4);
        if (lines > 1 || random.number(3) > 0) bytes += '\n';
    }
    return bytes;
}

void change(eeEnv* env, RandomText& random) {
    for (std::size_t changes = random.number(4); changes > 0; --changes) {
        const std::string name = random_name(random);
        if (random.number(2) == 0) {
            gui_env_rm(env, name.c_str(), ENVLOC_CWD);
        } else {
            const auto mod = random.number(4) == 0 ? ENVMOD_INCLUDED : ENVMOD_CHANGED;
            gui_env_put_modnew(env, name.c_str(), random.text("new =#", 6).c_str(), ENVLOC_CWD, mod);
        }
    }
    if (random.number(20) == 0) gui_env_put(env, random_name(random).c_str(), nullptr, ENVLOC_CWD);
}

std::optional<std::string> bytes_of(const TempSite& site) {
    return fs::exists(site.path(file)) ? std::optional(site.read(file)) : std::nullopt;
}

void save_once(const TempSite& site, unsigned seed) {
    SCOPED_TRACE(seed);
    RandomText random(seed);
    fs::remove(site.path(file));
    if (random.number(9) > 0) site.write(file, random_file(random));
    eeEnv* env = gui_env_open("model", ENVLOC_CWD);
    change(env, random);
    // Now and then somebody else has changed or removed the file in the meantime.
    if (random.number(9) == 0) site.write(file, random_file(random));
    if (random.number(19) == 0) fs::remove(site.path(file));

    const auto expected = saved_file(bytes_of(site), entries_of(env->cwd));
    ASSERT_TRUE(gui_env_close(env, true));
    ASSERT_EQ(bytes_of(site), expected);
}

}  // namespace

TEST(SavingModelTest, TenThousandSaves) {
    const ScopedVariable temporary(temporary_place, orvix::test::fast_place());
    const TempSite site;
    for (unsigned seed = 1; seed <= 10'000 && !HasFailure(); ++seed) save_once(site, seed);
}
