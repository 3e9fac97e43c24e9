// The rules of the journal.
#include "till/books/judging.h"

namespace zentaro::tools {

namespace {

// The latest entry of that key, or null.
const Entry* findKey(const std::vector<Entry>& entries, const std::string& key) {
  const Entry* found = nullptr;
  for (const Entry& entry : entries)
    if (!key.empty() && entry.key == key) found = &entry;
  return found;
}

Ruling byKey(const std::vector<Entry>& entries, const Wish& wish) {
  const Entry* entry = findKey(entries, wish.key);
  if (entry == nullptr) return {};
  if (entry->digest != wish.digest) return {Answer::OtherContent, entry};
  if (entry->fact == Fact::Printed) return {Answer::AlreadyPrinted, entry};
  return {};
}

}  // namespace

Ruling lookUp(const std::vector<Entry>& entries, const Wish& wish) { return byKey(entries, wish); }

Ruling mayPrint(const std::vector<Entry>& entries, const Wish& wish) {
  const Ruling found = byKey(entries, wish);
  if (found.answer != Answer::Print) return found;
  if (!wish.key.empty()) {
    const Entry* entry = findKey(entries, wish.key);
    const bool isUnknown = entry != nullptr && entry->fact != Fact::NotPrinted;
    return isUnknown ? Ruling{Answer::StillUnknown, entry} : Ruling{};
  }
  if (wish.again) return {};
  for (const Entry& entry : entries) {
    if (entry.digest != wish.digest) continue;
    if (isOpenQuestion(entry)) return {Answer::StillUnknown, &entry};
    if (entry.fact == Fact::Printed && !entry.isTold) return {Answer::PrintedUntold, &entry};
  }
  return {};
}

Question openQuestion(const Entry& entry, const Counters& now, const std::optional<int>& lastZ) {
  const bool isSameDay = !entry.lastZ || entry.lastZ == lastZ;
  if (!isSameDay || now.lastNumber < entry.before.lastNumber) return Question::TooLate;
  if (now.document == 0) {
    const bool isLess = entry.before.dayNet && now.dayNet && *now.dayNet < *entry.before.dayNet;
    return isLess ? Question::TooLate : Question::Countable;
  }
  const bool hasItsNumber =
      entry.number ? now.lastNumber == *entry.number : now.lastNumber == entry.before.lastNumber + 1;
  const int itsKind = entry.isCreditNote ? 2 : 1;
  const bool isItsKind = now.document == itsKind || now.document == partiallyClosed;
  return hasItsNumber && isItsKind ? Question::ItsDocument : Question::OthersDocument;
}

}  // namespace zentaro::tools
