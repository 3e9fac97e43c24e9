// Answers compared with what they should answer.
#include "till/line/answer_check.h"

#include <algorithm>
#include <array>

namespace zentaro::till {

namespace {

bool isHexWord(const Variant& field) {
  if (!field.is(Variant::Kind::Text)) return false;
  const std::u16string& text = field.text();
  const bool hasOtherCharacters = text.find_first_not_of(u"0123456789ABCDEFabcdef") != text.npos;
  return !text.empty() && text.size() <= 4 && !hasOtherCharacters;
}

bool isCode(const Variant& field, Command command) {
  return field.is(Variant::Kind::Int16) && field.int16() == static_cast<std::int16_t>(command);
}

Heard heardOf(Command command, ENVERR_CODES outcome, const Variant& fields) {
  if (outcome == ENVERR_COMM) return Heard::Nothing;
  const bool isAnswer = (outcome == ENVERR_OK || outcome == ENVERR_STATUS) && fields.is(Variant::Kind::Array);
  if (!isAnswer || !isCode(fields.array().at(0), command)) return Heard::OutOfStep;
  constexpr int leastFields = 5, fieldsOfARefusal = 4;
  const Array& answer = fields.array();
  const bool isComplete = answer.upperBound() + 1 >= (outcome == ENVERR_OK ? leastFields : fieldsOfARefusal);
  return isComplete && isHexWord(answer.at(1)) && isHexWord(answer.at(2)) ? Heard::InStep : Heard::Echo;
}

}  // namespace

Heard heardOfStatus(ENVERR_CODES outcome, const Variant& fields) {
  return heardOf(Command::Status, outcome, fields);
}

Heard heardOfSerial(ENVERR_CODES outcome, const Variant& fields) {
  return heardOf(Command::SerialNumber, outcome, fields);
}

bool answersLastCommand(const CZentaro& printer) {
  const Variant fields = printer.getResponse(0);
  if (!fields.is(Variant::Kind::Array) || !fields.array().at(0).is(Variant::Kind::Int16)) return true;
  const Variant& code = fields.array().at(0);
  const bool isCheque = isCode(code, Command::ChequeFace) || isCode(code, Command::ChequeEndorsement);
  const bool isSlipOff = printer.nLastCommand == static_cast<std::int16_t>(Command::SlipOff);
  return code.int16() == printer.nLastCommand || (isCheque && isSlipOff);
}

bool mayBeRaisedBehindTheCommand(int error) {
  constexpr std::array<int, 4> ofConversions{5, 6, 13, 94};
  return std::ranges::find(ofConversions, error) == ofConversions.end();
}

bool mayBeRaisedBehindTheCommand(int error, const Member& member) {
  const bool givesRecord = member.result.kind == ValueType::Object || member.result.kind == ValueType::Date;
  return givesRecord || mayBeRaisedBehindTheCommand(error);
}

Stepping steppingOf(const Member& member, const std::vector<Variant>& arguments) {
  constexpr std::array<std::string_view, 4> numberedByTheUser{"BuildOMB", "execute", "ExecuteOMB", "Reset"};
  const bool talks = (member.outcomes & exchanges) != 0;
  if (!talks || std::ranges::find(numberedByTheUser, member.name) != numberedByTheUser.end())
    return Stepping::None;
  const bool asksForRecord = member.name == "GetStatusN" || member.name == "GetStatusHASAR";
  const bool hasSelector = arguments.size() == 1 && arguments[0].is(Variant::Kind::Text);
  const bool asksForStatus = member.name == "StatusIF" && hasSelector &&
                             (arguments[0].text() == u"N" || arguments[0].text() == u"*");
  return asksForRecord || asksForStatus ? Stepping::Own : Stepping::Required;
}

}  // namespace zentaro::till
