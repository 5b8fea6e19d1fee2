// Random names given to what asks the system, beside a plain model.

#include "paths/directory_model.h"

#include <gtest/gtest.h>
#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/status.h>
#include <support/buffer.h>
#include <support/random_text.h>
#include <support/temporary_directory.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace orvix::test;

namespace {

class NamesThatAskTheSystem : public testing::Test {
protected:
    void SetUp() override {
        for (unsigned seed = 0; seed < 3000; ++seed) {
            RandomText random(seed);
            std::string name;
            for (std::size_t left = random.number(5); left > 0; --left) {
                name += directories_.piece(random.number(model::Directories::piece_count - 1));
                if (random.coin()) name += '/';
            }
            names_.push_back(name);
        }
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
    const model::Directories directories_{directory_.path()};
    const ScopedVariable drive_{"ORVIX_DRIVE_D", directories_.drive().c_str()};
    std::vector<std::string> names_;
};

std::optional<std::string> taken(char* text) {
    const std::unique_ptr<char, void (*)(char*)> owned(text, gmem_ee_free);
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
}

}  // namespace

// In full, so that no other test has left an answer for them in the caches.
TEST_F(NamesThatAskTheSystem, DirectoriesAgreeWithTheModel) {
    for (const std::string& name : names_) {
        const std::string full = directories_.name() + '/' + name;
        SCOPED_TRACE(full);
        Buffer argument(full);
        EXPECT_EQ(taken(HX_get_canonical_directory_name(argument)), directories_.canonical_directory(full));
    }
}

TEST_F(NamesThatAskTheSystem, DirectoriesThatCanBeEnteredAgreeWithTheModelAsPaths) {
    for (const std::string& name : names_) {
        const std::string full = directories_.name() + '/' + name;
        const std::optional<std::string> expected = directories_.entered(full);
        if (!expected) continue;
        SCOPED_TRACE(full);
        EXPECT_EQ(HX_get_canonical_directory_name_new(full).string(), model::lowered(*expected));
    }
}

TEST_F(NamesThatAskTheSystem, CanonicalTextsAgreeWithTheModel) {
    for (const std::string& name : names_) {
        const bool has_drive = name.find(':') == 1;
        if (has_drive) continue;  // its directory may be the bare drive, which keeps the answer of the first to ask
        SCOPED_TRACE(name);
        Buffer out = room_for(8192);
        char* const result = HX_canonical_path_force(name.c_str(), out);
        const std::optional<std::string> expected = directories_.canonical(name);
        EXPECT_EQ(result != nullptr ? std::optional(out.text()) : std::nullopt, expected);
    }
}

TEST_F(NamesThatAskTheSystem, SearchesAgreeWithTheModel) {
    for (const std::string& name : names_) {
        SCOPED_TRACE(name);
        const std::string spelled = model::is_absolute(name) ? model::fixed_up(name, true) : ".\\" + name;
        for (const bool accept_directories : {false, true}) {
            const bool found = !name.empty() && directories_.is_found(spelled, accept_directories);
            EXPECT_EQ(taken(HX_find_file(name.c_str(), nullptr, accept_directories)),
                      found ? std::optional(spelled) : std::nullopt);
        }
    }
}
