// The table store: tables of delimited text lines read from files or from
// text resources, kept by name for the life of the process (or until
// twFreeTable), and searched by key column.
#include "frame/alloc.h"
#include "tables/store.h"

#include <string.h>

#include <memory>
#include <unordered_map>

#include "include/fldkit.h"
#include "strings/lstr.h"
#include "tables/table_text.h"

namespace {

// The lines of one key column and delimiter by their key's sort key, each
// the first line with that key: keys whose sort keys are equal compare equal
// with lstrcmpA, so a lookup need not compare every line's key.
struct KeyIndex {
    int column;
    char delimiter;
    LCID locale;
    std::unordered_map<std::string, size_t> first;
};

struct Table {
    std::string name;
    std::shared_ptr<const std::vector<std::string>> lines;
    std::vector<KeyIndex> indexes;  // made on the first lookup of a column
};

// Every table loaded so far, by name (names compare without case).
std::vector<std::unique_ptr<Table>>& Tables() {
    static std::vector<std::unique_ptr<Table>> tables;
    return tables;
}

Table* Find(const char* name) {
    for (auto& t : Tables()) {
        if (lstrcmpiA(t->name.c_str(), name) == 0) {
            return t.get();
        }
    }
    return nullptr;
}

// Closes a file handle on every way out.
struct FileHandle {
    HANDLE h;
    explicit FileHandle(HANDLE handle) : h(handle) {}
    ~FileHandle() {
        if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    bool ok() const { return h != INVALID_HANDLE_VALUE; }
};

// Tables larger than this are not read (a table is a list for a popup, not
// a database).
constexpr DWORD kTableFileMax = 4u << 20;

bool ReadFileText(const char* path, std::string& text) {
    FileHandle f(CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!f.ok()) {
        return false;
    }
    const DWORD size = GetFileSize(f.h, nullptr);
    if (size == INVALID_FILE_SIZE || size > kTableFileMax) {
        return false;
    }
    text.resize(size);
    DWORD read = 0;
    if (size > 0 && !ReadFile(f.h, text.data(), size, &read, nullptr)) {
        return false;
    }
    text.resize(read);
    return true;
}

// A file table: the name as given, then with ".TBL" when it has no
// extension.
bool ReadTableFile(const char* name, std::string& text) {
    if (ReadFileText(name, text)) {
        return true;
    }
    const char* slash = strrchr(name, '\\');
    const char* base = slash != nullptr ? slash + 1 : name;
    if (strchr(base, '.') != nullptr || strlen(name) > MAX_PATH - 5) {
        return false;
    }
    char withExt[MAX_PATH];
    lstrcpynA(withExt, name, MAX_PATH - 4);
    lstrcatA(withExt, ".TBL");
    return ReadFileText(withExt, text);
}

// A resource table "@RES(name)": resource name of type "TABLE", or RCDATA.
bool ReadTableResource(const char* name, HINSTANCE instance, std::string& text) {
    char arg[MAX_PATH];
    const char* open = strchr(name, '(');
    if (open == nullptr) {
        return false;
    }
    lstrcpynA(arg, open + 1, sizeof arg);
    char* close = strchr(arg, ')');
    if (close != nullptr) {
        *close = 0;
    }
    HMODULE modules[2] = {instance, GetModuleHandleA(nullptr)};
    for (HMODULE m : modules) {
        if (m == nullptr) {
            continue;
        }
        HRSRC r = FindResourceA(m, arg, "TABLE");
        if (r == nullptr) {
            r = FindResourceA(m, arg, MAKEINTRESOURCEA(10));  // RT_RCDATA
        }
        if (r == nullptr) {
            continue;
        }
        HGLOBAL g = LoadResource(m, r);
        const void* p = g != nullptr ? LockResource(g) : nullptr;
        if (p == nullptr) {
            continue;
        }
        text.assign(static_cast<const char*>(p), SizeofResource(m, r));
        return true;
    }
    return false;
}

bool IsResourceName(const char* name) {
    return lstrnicmp(name, "@RES", 4) == 0;
}

Table* Load(const char* name, HINSTANCE instance) {
    if (name == nullptr || *name == 0) {
        return nullptr;
    }
    if (Table* t = Find(name)) {
        return t;
    }
    std::string text;
    const bool read = IsResourceName(name) ? ReadTableResource(name, instance, text) : ReadTableFile(name, text);
    if (!read) {
        return nullptr;
    }
    auto t = std::make_unique<Table>();
    t->name = name;
    t->lines = std::make_shared<const std::vector<std::string>>(fk::SplitTableText(text.data(), text.size()));
    Tables().push_back(std::move(t));
    return Tables().back().get();
}

}  // namespace

namespace fk {

const std::vector<std::string>* TableLines(const char* name, HINSTANCE instance) {
    Table* t = Load(name, instance);
    return t != nullptr ? t->lines.get() : nullptr;
}

SharedLines SharedTableLines(const char* name, HINSTANCE instance) {
    Table* t = Load(name, instance);
    return t != nullptr ? t->lines : nullptr;
}

HGLOBAL CopyLine(const std::string& line, int lineMax) {
    size_t len = line.size();
    if (lineMax > 0 && len > static_cast<size_t>(lineMax - 1)) {
        len = static_cast<size_t>(lineMax - 1);
    }
    HGLOBAL g = fk::GlobalAllocate(GMEM_MOVEABLE | GMEM_ZEROINIT, len + 1);
    if (g == nullptr) {
        return nullptr;
    }
    char* p = static_cast<char*>(GlobalLock(g));
    if (p == nullptr) {
        GlobalFree(g);
        return nullptr;
    }
    memcpy(p, line.data(), len);
    p[len] = 0;
    GlobalUnlock(g);
    return g;
}

}  // namespace fk

int WINAPI twLoadTable(const char* lpName, HINSTANCE hInstance) {
    return Load(lpName, hInstance) != nullptr ? 1 : 0;
}

int WINAPI twFreeTable(const char* lpName) {
    auto& tables = Tables();
    if (lpName == nullptr) {
        const bool any = !tables.empty();
        tables.clear();
        return any ? 1 : 0;
    }
    for (auto it = tables.begin(); it != tables.end(); ++it) {
        if (lstrcmpiA((*it)->name.c_str(), lpName) == 0) {
            tables.erase(it);
            return 1;
        }
    }
    return 0;
}

int WINAPI twCopyFile(const char* lpSource, const char* lpDest) {
    if (lpSource == nullptr || lpDest == nullptr || *lpSource == 0 || *lpDest == 0) {
        return 0;
    }
    FileHandle in(CreateFileA(lpSource, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!in.ok()) {
        return 0;
    }
    FileHandle out(
        CreateFileA(lpDest, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!out.ok()) {
        return 0;
    }
    char chunk[4096];
    for (;;) {
        DWORD read = 0;
        if (!ReadFile(in.h, chunk, sizeof chunk, &read, nullptr)) {
            return 0;
        }
        if (read == 0) {
            break;
        }
        DWORD written = 0;
        if (!WriteFile(out.h, chunk, read, &written, nullptr) || written != read) {
            return 0;
        }
    }
    // A table kept under the destination's name is read afresh next time.
    twFreeTable(lpDest);
    return 1;
}

namespace {

// The key of a line in a column: the field, clipped of blanks on both sides.
const char* LineKey(const std::string& line, char delimiter, int column, char* field, int32_t size) {
    return fk::LineField(line.c_str(), delimiter, column, field, size) ? lstrpreclip(lstrclip(field)) : nullptr;
}

std::string SortKey(LCID locale, const char* text) {
    const int size = LCMapStringA(locale, LCMAP_SORTKEY, text, -1, nullptr, 0);
    std::string key(size > 0 ? static_cast<size_t>(size) : 0, '\0');
    if (size > 0) LCMapStringA(locale, LCMAP_SORTKEY, text, -1, reinterpret_cast<LPSTR>(key.data()), size);
    return key;
}

const KeyIndex& IndexOf(Table& t, int column, char delimiter) {
    const LCID locale = GetThreadLocale();  // the locale lstrcmpA compares in
    for (const KeyIndex& index : t.indexes)
        if (index.column == column && index.delimiter == delimiter && index.locale == locale) return index;
    KeyIndex index{column, delimiter, locale, {}};
    char field[fk::kTableLineMax + 1];
    for (size_t i = 0; i < t.lines->size(); ++i)
        if (const char* key = LineKey((*t.lines)[i], delimiter, column, field, sizeof field))
            index.first.emplace(SortKey(locale, key), i);  // an earlier line keeps its place
    t.indexes.push_back(std::move(index));
    return t.indexes.back();
}

}  // namespace

HGLOBAL WINAPI twSearchTable(const char* lpName, int nKeyColumn, const char* lpKey, char cDelimiter,
                             HINSTANCE hInstance, int /*nReserved*/) {
    if (lpKey == nullptr) {
        return nullptr;
    }
    Table* table = Load(lpName, hInstance);
    if (table == nullptr) {
        return nullptr;
    }
    char field[fk::kTableLineMax + 1];
    const KeyIndex& index = IndexOf(*table, nKeyColumn, cDelimiter);
    if (auto hit = index.first.find(SortKey(index.locale, lpKey)); hit != index.first.end()) {
        const std::string& line = (*table->lines)[hit->second];
        const char* key = LineKey(line, cDelimiter, nKeyColumn, field, sizeof field);
        if (key != nullptr && lstrcmpA(key, lpKey) == 0) return fk::CopyLine(line, 0);
    }
    // Not in the index: every line is compared, so that a miss is the same
    // whatever the sort keys say.
    for (const std::string& line : *table->lines) {
        const char* key = LineKey(line, cDelimiter, nKeyColumn, field, sizeof field);
        if (key != nullptr && lstrcmpA(key, lpKey) == 0) return fk::CopyLine(line, 0);
    }
    return nullptr;
}
