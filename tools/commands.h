// The command line of `zentaro`.
#pragma once

namespace zentaro::tools {

/// Runs the subcommand that the words ask for; returns the exit status. What the parser refuses, help and
/// version are dealt with here, too.
int runCommandLine(int argc, char** argv);

}  // namespace zentaro::tools
