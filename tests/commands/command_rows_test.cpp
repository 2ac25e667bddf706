// The tests of every row of a family's table of commands.
#include "commands/command_rows.h"

namespace commands {

TEST_P(SentCommands, IsSent) {
    expectSent(GetParam());
}

TEST_P(SentCommands, IsNotDelivered) {
    expectNotDelivered(GetParam());
}

TEST_P(RefusedCommands, IsRefused) {
    expectRefused(GetParam());
}

} // namespace commands
