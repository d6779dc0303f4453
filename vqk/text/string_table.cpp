#include "vqk/text/string_table.h"

#include "vqk/platform/environment.h"
#include "vqk/platform/module.h"
#include "vqk/text/runtime_critical.h"
#include "vqk/text/string_csv.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace vq {
namespace {

const char* const kFileNames[kStringTableCount] = {
    "orv_string.csv", "orv_string_repair.csv", "orv_strings_translator.csv"};

struct Table {
    std::unordered_map<int, std::string> texts;
};

// Never destroyed: texts handed out must outlive every static destructor that might
// still print one. Tables replaced by a new folder are kept for the same reason.
struct State {
    std::atomic<Table*> tables[kStringTableCount] = {};
    std::vector<std::unique_ptr<Table>> owned;
    std::string folder;
};

State& state() {
    static State* s = new State;
    return *s;
}

bool readFile(const std::string& path, std::string& bytes) {
    FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return false;
    char buf[65536];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
        bytes.append(buf, n);
    std::fclose(f);
    return true;
}

std::string withSeparator(std::string folder) {
    if (!folder.empty() && folder.back() != '/' && folder.back() != '\\')
        folder += '/';
    return folder;
}

// Runs inside the critical section.
Table* loadTable(State& s, int table) {
    std::string candidates[3];
    candidates[0] = s.folder;
    platform::getEnv(VQK_STRING_DIR_ENV, candidates[1]);
    candidates[2] = platform::libraryFolder();
    auto t = std::make_unique<Table>();
    for (const std::string& folder : candidates) {
        if (folder.empty())
            continue;
        std::string bytes;
        if (readFile(withSeparator(folder) + kFileNames[table], bytes)) {
            parseStringCsv(bytes.data(), bytes.size(), t->texts);
            break;
        }
    }
    Table* p = t.get();
    s.owned.push_back(std::move(t));
    return p;
}

struct LoadRequest {
    int table;
    Table* result;
};

const Table& tableAt(int table) {
    State& s = state();
    if (Table* p = s.tables[table].load(std::memory_order_acquire))
        return *p;
    LoadRequest req{table, nullptr};
    runInRuntimeCritical(
        [](void* ctx) {
            auto* r = static_cast<LoadRequest*>(ctx);
            State& st = state();
            Table* p = st.tables[r->table].load(std::memory_order_acquire);
            if (!p) {
                p = loadTable(st, r->table);
                st.tables[r->table].store(p, std::memory_order_release);
            }
            r->result = p;
        },
        &req);
    return *req.result;
}

const char* find(int table, int id) {
    const Table& t = tableAt(table);
    auto it = t.texts.find(id);
    return it == t.texts.end() ? nullptr : it->second.c_str();
}

} // namespace

const char* stringTableText(int id, int table) {
    if (table >= 0) {
        if (table >= kStringTableCount)
            return "";
        const char* p = find(table, id);
        return p ? p : "";
    }
    for (int t = 0; t < kStringTableCount; ++t)
        if (const char* p = find(t, id))
            return p;
    return "";
}

const char* stringTableFileName(int table) {
    return table >= 0 && table < kStringTableCount ? kFileNames[table] : nullptr;
}

void setStringTableFolder(const char* folder) {
    runInRuntimeCritical(
        [](void* ctx) {
            State& s = state();
            const char* f = static_cast<const char*>(ctx);
            s.folder = f ? f : "";
            for (auto& t : s.tables)
                t.store(nullptr, std::memory_order_release);
        },
        const_cast<char*>(folder));
}

} // namespace vq
