// A large report, 200,000 rows of 8 cells (a part name, a verdict text, six numbers
// with 3 decimals; two styles), built and saved with vq_excel::SDoc as an XML
// spreadsheet and with libxlsxwriter as an .xlsx workbook (its default mode, which
// also holds the workbook in memory). Each writer runs in a process of its own, so
// that its peak resident memory is its own; three alternating rounds, the best time
// counts. Prints wall-clock and processor time, peak memory, file size and the ratios.
//
//   build/bench/bin/bench_spreadsheet
#include "vqk/platform/memory_info.h"
#include "vqk/spreadsheet/excel_doc.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace {

constexpr int kRows = 200000;
constexpr int kNumbers = 6;
const char* const kVerdicts[] = {"ok", "high", "low"};

double value(int r, int c) { return (r % 1000) * 0.731 + c * 10.0 + 0.0005; }

void buildAndSaveVqk(const char* path) {
    vq_excel::SDoc doc(path, 0);
    int text = doc.addStyle("", "", vq_excel::SBorder(), vq_excel::SStyle::eHaLeft, vq_excel::SStyle::eVaNone);
    int num = doc.addStyle("", "0.000", vq_excel::SBorder(), vq_excel::SStyle::eHaRight, vq_excel::SStyle::eVaNone);
    vq_excel::SWorksheet& s = doc.addSheet("Results");
    char name[32];
    for (int r = 0; r < kRows; ++r) {
        vq_excel::SRow& row = s.addRow();
        vq_excel::SCell* c = &row.addCells(2 + kNumbers);
        std::snprintf(name, sizeof name, "part-%06d", r);
        c[0].resetString(name, text);
        c[1].resetString(kVerdicts[r % 3], text);
        for (int k = 0; k < kNumbers; ++k)
            c[2 + k].resetNumber(value(r, k), 3, num);
    }
    if (!doc.save(nullptr))
        std::exit(2);
}

void buildAndSaveXlsx(const char* path) {
    lxw_workbook* wb = workbook_new(path);
    lxw_worksheet* ws = workbook_add_worksheet(wb, "Results");
    lxw_format* text = workbook_add_format(wb);
    format_set_align(text, LXW_ALIGN_LEFT);
    lxw_format* num = workbook_add_format(wb);
    format_set_num_format(num, "0.000");
    format_set_align(num, LXW_ALIGN_RIGHT);
    char name[32];
    for (int r = 0; r < kRows; ++r) {
        std::snprintf(name, sizeof name, "part-%06d", r);
        worksheet_write_string(ws, lxw_row_t(r), 0, name, text);
        worksheet_write_string(ws, lxw_row_t(r), 1, kVerdicts[r % 3], text);
        for (int k = 0; k < kNumbers; ++k)
            worksheet_write_number(ws, lxw_row_t(r), lxw_col_t(2 + k), value(r, k), num);
    }
    if (workbook_close(wb) != LXW_NO_ERROR)
        std::exit(2);
}

struct SRun {
    double wall = 1e30, cpu = 1e30, peakMb = 0, fileMb = 0;
};

// The child: one build and save, its figures appended to `result`.
int runChild(const char* which, const char* result) {
    const bool vqk = std::strcmp(which, "vqk") == 0;
    const char* path = vqk ? "bench_spreadsheet.xml" : "bench_spreadsheet.xlsx";
    auto wall0 = std::chrono::steady_clock::now();
    std::clock_t cpu0 = std::clock();
    if (vqk)
        buildAndSaveVqk(path);
    else
        buildAndSaveXlsx(path);
    double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - wall0).count();
    double cpu = double(std::clock() - cpu0) / CLOCKS_PER_SEC;
    vq::platform::SMemoryInfo m;
    vq::platform::queryMemoryInfo(m);
    FILE* f = std::fopen(path, "rb");
    long size = 0;
    if (f) {
        std::fseek(f, 0, SEEK_END);
        size = std::ftell(f);
        std::fclose(f);
    }
    FILE* out = std::fopen(result, "w");
    if (!out)
        return 1;
    std::fprintf(out, "%f %f %f %f\n", wall, cpu, double(m.peakResidentBytes) / 1048576.0, size / 1048576.0);
    std::fclose(out);
    return 0;
}

bool runOnce(const char* self, const char* which, SRun& best) {
    std::string result = std::string("bench_spreadsheet_") + which + ".txt";
    std::string cmd = std::string("\"") + self + "\" " + which + " " + result;
    if (std::system(cmd.c_str()) != 0)
        return false;
    SRun r;
    FILE* f = std::fopen(result.c_str(), "r");
    bool ok = f && std::fscanf(f, "%lf %lf %lf %lf", &r.wall, &r.cpu, &r.peakMb, &r.fileMb) == 4;
    if (f)
        std::fclose(f);
    best.wall = std::min(best.wall, r.wall);
    best.cpu = std::min(best.cpu, r.cpu);
    best.peakMb = std::max(best.peakMb, r.peakMb);
    best.fileMb = r.fileMb;
    return ok;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3)
        return runChild(argv[1], argv[2]);
    SRun vqk, xlsx;
    for (int round = 0; round < 3; ++round)
        if (!runOnce(argv[0], "vqk", vqk) || !runOnce(argv[0], "xlsx", xlsx)) {
            std::fprintf(stderr, "bench_spreadsheet: a run failed\n");
            return 1;
        }
    std::printf("%d rows x %d cells, built and saved (best of 3)\n", kRows, 2 + kNumbers);
    std::printf("  %-26s %8s %8s %10s %9s\n", "", "wall s", "cpu s", "peak MB", "file MB");
    std::printf("  %-26s %8.3f %8.3f %10.1f %9.1f\n", "vq_excel::SDoc (.xml)", vqk.wall, vqk.cpu, vqk.peakMb, vqk.fileMb);
    std::printf("  %-26s %8.3f %8.3f %10.1f %9.1f\n", "libxlsxwriter (.xlsx)", xlsx.wall, xlsx.cpu, xlsx.peakMb,
                xlsx.fileMb);
    std::printf("  time ratio libxlsxwriter / vqk: wall %.2f, cpu %.2f; peak memory ratio %.2f\n",
                xlsx.wall / vqk.wall, xlsx.cpu / vqk.cpu, xlsx.peakMb / vqk.peakMb);
    return 0;
}
