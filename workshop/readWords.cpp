// The only file that knows toml++, which is all header. Each section of the file has a table of
// its keys; what is not in the table is a problem.
#include "workshop/readWords.h"

#include "workshop/letters.h"

#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#define TOML_ENABLE_WINDOWS_COMPAT 0
#include <toml++/toml.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>

namespace fs = std::filesystem;

struct st_wordsKey {
    const char *name;
    std::function<void(const toml::node &)> read;
    bool needed = true; // where its section is
};

struct st_wordsSection {
    const char *name;
    bool needed;
    std::vector<st_wordsKey> keys;
};

// ------------------------------------------------------------------------------- problems

static void complain(st_wordsFile *file, const toml::source_region &where,
                     const std::string &text) {
    file->problems.push_back(
        {static_cast<int>(where.begin.line), static_cast<int>(where.begin.column), text});
}

static st_phrase phraseAt(const std::string &text, const toml::source_region &where) {
    return {text, static_cast<int>(where.begin.line), static_cast<int>(where.begin.column),
            static_cast<int>(where.end.line)};
}

// The known name that is meant, most likely; "" when none is like it.
static std::string meantBy(const std::string &word, const std::vector<std::string> &known) {
    std::string nearest;
    std::size_t least = std::max<std::size_t>(2, word.size() / 2) + 1;
    for (const std::string &name : known)
        if (const std::size_t distance = editDistance(word, name); distance < least) {
            least = distance;
            nearest = name;
        }
    return nearest;
}

// Of that name, or of all that are known.
static std::string suggestion(const std::string &meant, const std::vector<std::string> &known) {
    if (!meant.empty())
        return "; " + meant + " is meant?";
    std::string all;
    for (const std::string &name : known)
        all += (all.empty() ? "; known are " : ", ") + name;
    return all;
}

template <typename Named> static std::vector<std::string> namesOf(const std::vector<Named> &list) {
    std::vector<std::string> names;
    names.reserve(list.size());
    for (const Named &entry : list)
        names.emplace_back(entry.name);
    return names;
}

static const char *kindOf(const toml::node &node) {
    switch (node.type()) {
    case toml::node_type::string: return "text";
    case toml::node_type::table: return "a section";
    case toml::node_type::array: return "a list";
    case toml::node_type::integer:
    case toml::node_type::floating_point: return "a number without quotation marks";
    case toml::node_type::boolean: return "true or false";
    default: return "a date or a time without quotation marks";
    }
}

// -------------------------------------------------------------------------------- values

// Runs of blanks, tabs and line breaks count as one blank, at the ends as nothing; so do blanks of
// all kinds where there is nothing else.
static std::string tidied(const std::string &text) {
    std::string tidy;
    for (const char c : text) {
        if (std::strchr(" \t\r\n", c) == nullptr || c == '\0')
            tidy += c;
        else if (!tidy.empty() && tidy.back() != ' ')
            tidy += ' ';
    }
    while (!tidy.empty() && tidy.back() == ' ')
        tidy.pop_back();
    const std::u32string letters = lettersOf(tidy);
    return std::all_of(letters.begin(), letters.end(), isBlank) ? "" : composed(tidy);
}

// False, after a complaint, for what is no text.
static bool readPhrase(st_wordsFile *file, const toml::node &node, const std::string &what,
                       bool mayBeEmpty, st_phrase *phrase) {
    const toml::value<std::string> *value = node.as_string();
    if (value == nullptr) {
        complain(file, node.source(),
                 what + " has to be text in quotation marks, not " + kindOf(node));
        return false;
    }
    *phrase = phraseAt(tidied(value->get()), node.source());
    if (phrase->text.empty() && !mayBeEmpty)
        complain(file, node.source(), what + " is empty");
    return true;
}

static void readNames(st_wordsFile *file, const toml::node &node, const std::string &what,
                      std::vector<st_phrase> *names) {
    const toml::array *list = node.as_array();
    if (list == nullptr) {
        complain(file, node.source(),
                 what + " has to be a list of names, [\"...\", \"...\"], not " + kindOf(node));
        return;
    }
    if (list->empty())
        complain(file, node.source(), what + " is an empty list; it takes one to twelve names");
    if (list->size() > MOST_NAMES)
        complain(file, node.source(),
                 what + " has " + std::to_string(list->size()) + " names, " +
                     std::to_string(list->size() - MOST_NAMES) + " more than fit on a wheel");
    for (const toml::node &entry : *list) {
        st_phrase name;
        if (readPhrase(file, entry, "a name in " + what, false, &name))
            names->push_back(name);
    }
}

// A path in the file is meant from the file's own folder.
static void readPath(st_wordsFile *file, const toml::node &node, const std::string &what,
                     st_phrase *path) {
    const toml::value<std::string> *value = node.as_string();
    if (value == nullptr || value->get().empty()) {
        readPhrase(file, node, what, false, path);
        return;
    }
    const fs::path found = fs::path(file->path).parent_path() / fs::u8path(value->get());
    *path = phraseAt(found.string(), node.source());
    std::error_code failed;
    const fs::file_status status = fs::status(found, failed);
    if (!fs::exists(status))
        complain(file, node.source(), "there is no file " + path->text);
    else if (!fs::is_regular_file(status))
        complain(file, node.source(), path->text + " is no file");
}

static void readColor(st_wordsFile *file, const toml::node &node, const std::string &what,
                      unsigned *color) {
    const toml::value<std::string> *value = node.as_string();
    const std::string text = value == nullptr ? "" : value->get();
    if (text.size() == 7 && text[0] == '#' &&
        std::all_of(text.begin() + 1, text.end(),
                    [](unsigned char c) { return std::isxdigit(c) != 0; }))
        *color = static_cast<unsigned>(std::stoul(text.substr(1), nullptr, 16));
    else
        complain(file, node.source(),
                 what + " has to be a colour such as \"#FFD23F\": red, green and blue, two digits "
                        "each from 00 to FF");
}

static void readAddress(st_wordsFile *file, const toml::node &node, st_phrase *address) {
    if (!readPhrase(file, node, "address", false, address) || address->text.empty())
        return;
    if (address->text.rfind("https://", 0) != 0 && address->text.rfind("http://", 0) != 0)
        complain(file, node.source(), "address has to begin with https:// or http://");
}

// Two or three letters, and what else there is to say of it behind hyphens.
static bool isLanguage(const std::string &code) {
    const std::size_t main = std::min(code.find('-'), code.size());
    return main >= 2 && main <= 3 && code.back() != '-' && code.find("--") == std::string::npos &&
           std::all_of(code.begin(), code.end(),
                       [](unsigned char c) { return std::isalnum(c) != 0 || c == '-'; });
}

static void readLanguage(st_wordsFile *file, const toml::node &node, st_phrase *language) {
    if (readPhrase(file, node, "language", false, language) && !language->text.empty() &&
        !isLanguage(language->text))
        complain(file, node.source(),
                 "language has to be a code such as \"de\", \"sv\" or \"pt-BR\"");
}

static void readLogo(st_wordsFile *file, const toml::node &node, st_phrase *logo) {
    if (!readPhrase(file, node, "text", false, logo))
        return;
    const std::size_t count = lettersOf(logo->text).size();
    if (count > MOST_IN_LOGO)
        complain(file, node.source(),
                 "the logo has " + std::to_string(count) +
                     " letters; one to three fit on the block");
}

// ------------------------------------------------------------------------------- sections

static std::vector<st_wordsSection> sectionsOf(st_wordsFile *file) {
    st_words &words = file->words;
    const auto phrase = [file](const char *name, st_phrase *target, bool mayBeEmpty = false) {
        return st_wordsKey{
            name, [=](const toml::node &node) { readPhrase(file, node, name, mayBeEmpty, target); },
            !mayBeEmpty};
    };
    const auto names = [file](const char *name, std::vector<st_phrase> *target) {
        return st_wordsKey{name,
                           [=](const toml::node &node) { readNames(file, node, name, target); }};
    };
    const auto path = [file](const char *name, st_phrase *target) {
        return st_wordsKey{name,
                           [=](const toml::node &node) { readPath(file, node, name, target); }};
    };
    st_wordsSection palette = {"palette", false, {}};
    for (std::size_t k = 0; k < PALETTE_COLORS; k++)
        palette.keys.push_back({PALETTE_NAMES[k], [=](const toml::node &node) {
                                    readColor(file, node, PALETTE_NAMES[k],
                                              &file->words.palette[k]);
                                }});
    return {{"sign", true, {phrase("name", &words.name), phrase("line", &words.secondLine, true)}},
            {"logo",
             true,
             {{"text", [=](const toml::node &node) { readLogo(file, node, &file->words.logo); }}}},
            {"scroll", true, {phrase("text", &words.scrollText)}},
            {"greetings",
             true,
             {names("first", &words.wheels[0]), names("second", &words.wheels[1]),
              names("third", &words.wheels[2])}},
            {"music", false, {path("file", &words.music)}},
            {"picture", false, {path("screen", &words.screen)}},
            {"letters", false, {path("font", &words.font)}},
            {"page",
             false,
             {{"address",
               [=](const toml::node &node) { readAddress(file, node, &file->words.address); }},
              {"language",
               [=](const toml::node &node) { readLanguage(file, node, &file->words.language); }}}},
            palette};
}

// Null for a name that is not in the list.
template <typename Named>
static const Named *findNamed(const std::vector<Named> &list, const std::string &name) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const Named &entry) { return name == entry.name; });
    return found == list.end() ? nullptr : &*found;
}

static void readSection(st_wordsFile *file, const st_wordsSection &section,
                        const toml::node &node) {
    const std::string title = "[" + std::string(section.name) + "]";
    const toml::table *table = node.as_table();
    if (table == nullptr) {
        complain(file, node.source(),
                 std::string(section.name) + " has to be a section, " + title + ", not " +
                     kindOf(node));
        return;
    }
    const std::vector<std::string> known = namesOf(section.keys);
    std::set<std::string> misspelt; // these are there, after all
    for (auto &&[key, value] : *table) {
        const std::string name(key.str());
        if (const st_wordsKey *found = findNamed(section.keys, name)) {
            found->read(value);
            continue;
        }
        const std::string meant = meantBy(name, known);
        misspelt.insert(meant);
        complain(file, key.source(),
                 std::string(title)
                     .append(" has no key ")
                     .append(name)
                     .append(suggestion(meant, known)));
    }
    for (const st_wordsKey &key : section.keys)
        if (section.needed && key.needed && !table->contains(key.name) &&
            misspelt.count(key.name) == 0)
            complain(file, node.source(), std::string(title).append(" lacks ").append(key.name));
}

// The first section, as "[sign]", that has a key of that name; "" for none.
static std::string sectionWith(const std::vector<st_wordsSection> &sections,
                               const std::string &key) {
    for (const st_wordsSection &section : sections)
        if (findNamed(section.keys, key) != nullptr)
            return "[" + std::string(section.name) + "]";
    return "";
}

static void readSections(st_wordsFile *file, const toml::table &whole) {
    const std::vector<st_wordsSection> sections = sectionsOf(file);
    const std::vector<std::string> titles = namesOf(sections);
    std::set<std::string> misspelt;
    for (auto &&[key, value] : whole) {
        const std::string name(key.str());
        if (const st_wordsSection *known = findNamed(sections, name))
            readSection(file, *known, value);
        else if (const std::string title = sectionWith(sections, name);
                 !value.is_table() && !title.empty())
            complain(file, key.source(),
                     std::string(name).append(" stands in no section; it belongs below ") + title);
        else {
            const std::string meant = meantBy(name, titles);
            misspelt.insert(meant);
            complain(file, key.source(),
                     "there is no section [" + name + "]" + suggestion(meant, titles));
        }
    }
    for (const st_wordsSection &section : sections)
        if (section.needed && !whole.contains(section.name) && misspelt.count(section.name) == 0)
            file->problems.push_back(
                {0, 0, "the section [" + std::string(section.name) + "] is missing"});
}

// What somebody who has never heard of TOML may have done; "" where the parser's words will do.
static std::string adviceFor(const std::string &description) {
    const struct {
        const char *said, *advice;
    } cases[] = {
        {"utf-8", "save the file as UTF-8 text"},
        {"value type", "text has to stand between straight quotation marks, \"...\""},
        {"control characters", "is the quotation mark at the end of the line missing?"},
        {"unicode scalar", "write / for \\ in the name of a file"},
        {"escape sequence", "write / for \\ in the name of a file"},
    };
    for (const auto &c : cases)
        if (description.find(c.said) != std::string::npos)
            return std::string("; ") + c.advice;
    return "";
}

static void readSource(st_wordsFile *file) {
    toml::parse_result result = toml::parse(file->source, file->path);
    if (!result) {
        const std::string description(result.error().description());
        complain(file, result.error().source(),
                 description + adviceFor(description) +
                     "; all the rest is looked at once this is mended");
        return;
    }
    readSections(file, result.table());
}

// --------------------------------------------------------------------------------- public

st_wordsFile readWords(const std::string &path) {
    st_wordsFile file = {path, {}, {}, {}};
    std::error_code failed;
    std::ifstream stream;
    errno = EISDIR;
    if (!fs::is_directory(path, failed))
        stream.open(path, std::ios::binary);
    if (stream.is_open()) {
        file.source.assign(std::istreambuf_iterator<char>(stream), {});
        readSource(&file);
    } else
        file.problems.push_back({0, 0, std::string("cannot be read: ") + std::strerror(errno)});
    return file;
}

const st_words &defaultWords() {
    static const st_wordsFile file = [] {
        st_wordsFile read = {"invitation.toml", defaultWordsSource(), {}, {}};
        readSource(&read);
        return read;
    }();
    return file.words;
}

std::string sayProblems(const st_wordsFile &file) {
    std::vector<st_problem> problems = file.problems;
    std::stable_sort(problems.begin(), problems.end(),
                     [](const st_problem &a, const st_problem &b) {
                         return std::make_pair(a.line, a.column) < std::make_pair(b.line, b.column);
                     });
    std::string lines;
    for (const st_problem &problem : problems) {
        lines += file.path + ":";
        if (problem.line > 0)
            lines += std::to_string(problem.line) + ":" + std::to_string(problem.column) + ":";
        lines += " " + problem.text + "\n";
    }
    return lines;
}

// A letter that is written as an escape, or apart from its marks, is not found; then the phrase's
// own place will do.
st_problem letterProblem(const st_wordsFile &file, const st_phrase &phrase, char32_t letter,
                         const std::string &text) {
    int line = 1;
    int column = 1;
    for (const char32_t at : lettersOf(file.source)) {
        const bool begun = line > phrase.line || (line == phrase.line && column >= phrase.column);
        if (begun && line <= phrase.lastLine && at == letter)
            return {line, column, text};
        line += at == U'\n' ? 1 : 0;
        column = at == U'\n' ? 1 : column + 1;
    }
    return {phrase.line, phrase.column, text};
}
