// Text for people: names out of files made printable, numbers made short, cells made columns.
#pragma once

#include <string>
#include <vector>

// A name out of a file as UTF-8. Null gives "". What is not UTF-8 is taken for Latin-1.
std::string utf8(const char *bytes);

// The same in quotes, with control characters, quotes and backslashes escaped: one line always.
std::string quoted(const char *bytes);

// Without the quotes: for paths.
std::string printable(const std::string &bytes);

// A number with four digits that count.
std::string shortNumber(double number);

// A chunk ID as its four characters.
std::string idText(unsigned int id);

// "1 point", "2 points".
std::string counted(long long count, const std::string &thing);

struct st_countOf {
    const char *before; // such as "the luminosity of "
    long long count;
    const char *thing;
};

// "the luminosity of 2 surfaces and 1 shader": those of which there are any.
std::string joinedCounts(const std::vector<st_countOf> &counts);

// "a", "a and b", "a, b and c".
std::string joined(const std::vector<std::string> &words);

// "diffuseSharpness" as "diffuse sharpness".
std::string spacedWords(const std::string &camelCase);

// Rows of cells as lines of columns two spaces apart, each line indented by two. A column is set
// right when its title begins with '>', which is dropped. Columns that are empty but for their
// title are left out. A row may be shorter than the first, not longer.
std::string columns(const std::vector<std::vector<std::string>> &titleAndRows);
