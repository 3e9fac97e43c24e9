// Fiscal arithmetic, worked out by hand.
#include "virtual-printer/fiscal/money.h"

#include <gtest/gtest.h>

#include "virtual-printer/fiscal/document.h"

namespace virtual_printer::money_test {

TEST(Money, LineAmountRoundsHalfUpToACent) {
  const struct {
    Thousandths quantity;
    Cents price, amount;
  } rows[] = {
      {1000, 1250, 1250},                    // one piece
      {2000, 1250, 2500}, {525, 999, 524},   // 524.475
      {500, 1, 1},                           // half a cent
      {499, 1, 0},        {1500, 333, 500},  // 499.5
      {1, 499, 0},                           // 0.499
      {1, 500, 1},                           // 0.5
      {1000, 0, 0},       {largestQuantity, largestPrice, 999'999'998'999'000'000},
  };
  for (const auto& row : rows)
    EXPECT_EQ(lineAmount(row.quantity, row.price), row.amount) << row.quantity << " x " << row.price;
}

TEST(Money, TaxRoundsHalfUpOnTheWholeBase) {
  const struct {
    Cents base;
    Rate rate;
    Cents tax;
  } rows[] = {
      {2500, 1600, 400}, {2251, 1600, 360},  // 360.16
      {3, 1600, 0},                          // 0.48
      {25, 1800, 5},                         // 4.5
      {50, 100, 1},                          // 0.5
      {49, 100, 0},      {999, 3100, 310},   // 309.69
      {2000, 300, 60},   {largestAmount, largestRate, 9'998'999'999'999},
  };
  for (const auto& row : rows)
    EXPECT_EQ(percentage(row.base, row.rate), row.tax) << row.base << " at " << row.rate;
}

TEST(Money, DiscountIsSharedByLargestRemainder) {
  const struct {
    const char* name;
    BySlot bases;
    Cents discount;
    BySlot shares;
  } rows[] = {
      {"one base takes all", {0, 2500, 0, 0}, 500, {0, 500, 0, 0}},
      {"even shares", {1000, 1000, 0, 0}, 500, {250, 250, 0, 0}},
      {"a tie goes to the exempt base", {100, 100, 0, 0}, 1, {1, 0, 0, 0}},
      {"a tie among rates goes to the first", {0, 100, 100, 100}, 1, {0, 1, 0, 0}},
      {"two left over go to two bases", {0, 100, 100, 100}, 2, {0, 1, 1, 0}},
      {"the larger remainder wins over the order", {100, 200, 0, 0}, 1, {0, 1, 0, 0}},  // 1/3 and 2/3
      {"thirds", {100, 100, 100, 0}, 100, {34, 33, 33, 0}},
      // 524/5022 of 500 is 52.17, 2500: 248.90, 999: 99.46 twice; two cents left go to the .90 and to the
      // .46 of rate 2
      {"four bases", {524, 2500, 999, 999}, 500, {52, 249, 100, 99}},
      {"all of it", {524, 2500, 999, 999}, 5022, {524, 2500, 999, 999}},
      {"nothing to share", {0, 0, 0, 0}, 0, {0, 0, 0, 0}},
      {"the largest amounts", {largestAmount, 0, 0, 0}, largestAmount, {largestAmount, 0, 0, 0}},
  };
  for (const auto& row : rows) EXPECT_EQ(shareDiscount(row.bases, row.discount), row.shares) << row.name;
}

TEST(Money, AmountsAreWrittenForAnswersAndForPaper) {
  const struct {
    Cents amount;
    const char* plain;
    const char* paper;
  } rows[] = {
      {0, "0.00", "0,00"},
      {5, "0.05", "0,05"},
      {123456, "1234.56", "1.234,56"},
      {-500, "-5.00", "-5,00"},
      {99999, "999.99", "999,99"},
      {100000, "1000.00", "1.000,00"},
      {123456789012, "1234567890.12", "1.234.567.890,12"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(plainDecimal(row.amount), row.plain);
    EXPECT_EQ(paperDecimal(row.amount), row.paper);
  }
  const std::pair<Thousandths, const char*> quantities[] = {
      {2000, "2"}, {525, "0,525"}, {1050, "1,050"}, {1, "0,001"}, {1234500, "1.234,500"}};
  for (const auto& [quantity, written] : quantities) EXPECT_EQ(paperQuantity(quantity), written);
  const std::pair<Rate, const char*> rates[] = {{1650, "16,50%"}, {800, "8,00%"}, {5, "0,05%"}};
  for (const auto& [rate, written] : rates) EXPECT_EQ(paperRate(rate), written);
}

TEST(RateTable, PlacesAreKeptAndTheFourthRateHasNone) {
  const struct {
    const char* name;
    std::vector<Rate> used;
    std::vector<int> places;  // -1: none
  } rows[] = {
      {"the usual rates have their places", {3100, 800, 1600, 0}, {3, 2, 1, 0}},
      {"unusual rates fill up from the first", {1200, 900, 500, 700}, {1, 2, 3, -1}},
      {"a known rate keeps its place", {1600, 800, 1600, 800}, {1, 2, 1, 2}},
      {"an unusual rate first", {1200, 1600, 800}, {1, 2, 3}},
      {"exempt never needs a place", {1600, 800, 3100, 0, 1200}, {1, 2, 3, 0, -1}},
  };
  for (const auto& row : rows) {
    RateTable table;
    for (std::size_t at = 0; at < row.used.size(); ++at) {
      const auto place = table.place(row.used[at]);
      EXPECT_EQ(place ? static_cast<int>(*place) : -1, row.places[at]) << row.name << ", use " << at;
    }
  }
}

}  // namespace virtual_printer::money_test
