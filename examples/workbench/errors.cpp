// Fifth station: a pending error, and the chain of handlers.
#include "catalogue.h"
#include "netlist.h"
#include "tour.h"

#include <orvix/gsl/error_handler.h>
#include <orvix/gsl/pending_error.h>

namespace workbench {

namespace {

constexpr int net_without_driver = 1;  // lines of the set "netlist"
constexpr int unreadable_netlist = 13;
constexpr int netlist_was_read = 16;

// Told to a user who looks at something else: takes what is no error.
class StatusLine final : public ErrorHandler {
public:
    ~StatusLine() override = default;

private:
    void capture_message(Category, const std::string& text) override {
        print_indented("status line takes it:", 4);
        print_indented(text, 6);
    }
    bool handle_message(Category category, const std::string& text) override {
        if (category == Category::Error) {
            print_indented("status line declines: an error needs a window", 4);
            return false;
        }
        capture_message(category, text);
        return true;
    }
};

// Takes everything, as a handler does that overrides no more than this.
class MessageWindow final : public ErrorHandler {
public:
    ~MessageWindow() override = default;

private:
    void capture_message(Category, const std::string& text) override {
        print_indented("message window takes it:", 4);
        print_indented(text, 6);
    }
};

std::string message(const Catalogue& catalogue, int line, std::initializer_list<std::string_view> texts) {
    const auto text = catalogue.text("netlist", line);
    return text ? filled_in(*text, texts) : gerror_get_error_message();
}

// The deep code: it knows what is wrong, and not whether anybody wants to hear of it.
bool check_net(const Catalogue& catalogue, const Net& net) {
    if (net.has_driver()) return true;
    set_pending_error(message(catalogue, net_without_driver, {net.name}));
    return false;
}

// The layer above: it knows where.
bool check_netlist(const Catalogue& catalogue, const std::string& file) {
    const auto netlist = read_netlist(file);
    if (!netlist) {
        set_pending_error(message(catalogue, unreadable_netlist, {file}));
        return false;
    }
    report_info(message(catalogue, netlist_was_read,
                        {std::to_string(netlist->component_count()), std::to_string(netlist->nets.size()),
                         std::to_string(netlist->pin_count())}));
    for (const Net& net : netlist->nets) {
        if (check_net(catalogue, net)) continue;
        add_error_location_info(file + ", line " + std::to_string(net.line));
        return false;
    }
    return true;
}

std::string pending() { return error_pending() ? "an error is pending" : "no error is pending"; }

}  // namespace

void show_error() {
    print_heading("5. Errors: left pending, given a place, reported");
    const Catalogue catalogue(nullptr);
    const MessageWindow window;  // made first, asked last
    const StatusLine status_line;

    print_indented("A status line was made after a message window, so it is asked first. A netlist is checked:", 2);
    const bool is_good = check_netlist(catalogue, "amplifier.net");
    print_indented("The check is over: " + pending() + ".", 2);
    if (is_good) return;
    print_indented("report_pending_error:", 2);
    report_pending_error();
    print_indented("After the report " + pending() + ".", 2);
}

}  // namespace workbench
