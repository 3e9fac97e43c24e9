// The tables of the books, and a row of them as a job.
#pragma once

#include <string>

#include "till/books/job.h"
#include "till/books/sqlite.h"

namespace zentaro::till {

/// The file, empty where there is none, with the rights that all accounts of the machine need.
std::string madeFile(const std::string& path);

/// Sets the connection up, and makes the tables in an empty file.
void setUp(const Database& database, const std::chrono::milliseconds& patience);

/// All columns of a job in the order of jobFrom() and bind().
inline constexpr std::string_view jobColumns =
    "seq,id,owner,printer,kind,attempt,digest,body,net,total,patience,boot,uptime,state,verdict,machine,"
    "before_number,before_day,last_z,turn,reached_close,number,result,cause,told,beyond,accepted,begun,ended,"
    "revision";

/// Raises BooksError (Damaged) for a row that makes no sense.
Job jobFrom(const Statement& row, const std::string& path);
void bindJob(Statement& statement, const Job& job);

}  // namespace zentaro::till
