#include "runner/options.h"

#include "runner/virtual_machine.h"

namespace bench {

Options parseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        if (name == "--check") {
            options.check = true;
            continue;
        }
        if (++i == argc) {
            giveUp(name + " needs a value");
        }
        if (name == "--library") {
            options.library = argv[i];
        } else if (name == "--class-path") {
            options.class_path = argv[i];
        } else if (name == "--peers") {
            options.peers = argv[i];
        } else if (name == "--load") {
            options.load = argv[i];
        } else if (name == "--only") {
            options.only.insert(argv[i]);
        } else {
            giveUp("unknown option " + name);
        }
    }
    return options;
}

} // namespace bench
