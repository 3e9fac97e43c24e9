// What the exit status of a sale or a closing says to scripts.
#pragma once

#include "till/course/closing_verdict.h"
#include "till/course/verdict.h"

namespace zentaro::tools {

int exitStatus(const till::Verdict& verdict);
int exitStatus(const till::ClosingVerdict& verdict);

}  // namespace zentaro::tools
