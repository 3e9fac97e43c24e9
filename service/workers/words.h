// What people are told of jobs: why one waits, and what somebody does next.
#pragma once

#include <string>

#include "till/books/job.h"

namespace zentaro::service {

/// What somebody does about the job; empty for nothing.
std::string nextOf(const till::Job& job);

std::string expiredText();
std::string withdrawnText();
std::string otherMachineText(const std::string& wanted, const std::string& found);
/// Of a Z that would destroy the evidence of an unknown job.
std::string heldText(const std::string& unknownId);

}  // namespace zentaro::service
