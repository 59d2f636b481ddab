// Text as letters: UTF-8 taken apart, put together again and compared.
//
//   for (const char32_t letter : lettersOf(composed("A\u030a"))) ...   // one: U+00C5
#pragma once

#include <string>

// One code point each. What is no UTF-8 gives U+FFFD.
std::u32string lettersOf(const std::string &text);
std::string textOf(const std::u32string &letters);

// With marks joined to their letters wherever Unicode has the two as one (NFC).
std::string composed(const std::string &text);

// Whether there is nothing to be seen of it: spaces of any width, marks for the flow of text.
bool isBlank(char32_t letter);

// Whether its script runs from right to left, as Arabic and Hebrew do.
bool runsLeft(char32_t letter);

// For people: 'ж' (U+0436), or the number alone for what cannot be seen.
std::string sayLetter(char32_t letter);

// How many letters one has to put in, take out or change to make the one of the other.
std::size_t editDistance(const std::string &one, const std::string &other);
