// The check job's spreadsheet report: "Summary" has one row per document, coloured by
// its status, with the totals below and a print setup for a landscape page; "Messages"
// lists why each document that did not pass failed.
#include "check_report.h"

#include "vqk/spreadsheet/excel_doc.h"

namespace vqk_run {
namespace {

const char* const kColumns[] = {"Document", "Status", "Seconds", "Features", "Characteristics",
                                "Measured", "Passed", "Failed", "Elements", "Depth"};
const int kNumColumns = int(sizeof kColumns / sizeof kColumns[0]);

// Background colours by status: passed, failed (invalid, unreadable, not started),
// time-out, crash.
const char* statusColour(EDocStatus s) {
    switch (s) {
    case EDocStatus::passed: return "C6EFCE";
    case EDocStatus::timeout: return "FFEB9C";
    case EDocStatus::crash: return "D9B3FF";
    default: return "FFC7CE";
    }
}

struct SStyles {
    int header, text, number, total;
    int status[6];
};

SStyles addStyles(vq_excel::SDoc& doc) {
    SStyles st;
    const vq_excel::SBorder thin(15, 1);
    const int bold = doc.addFont("Arial", 10, true, false);
    vq_excel::SStyle header;
    header.color = "D9D9D9";
    header.border = thin;
    header.font = bold;
    st.header = doc.addStyle(header);
    st.text = doc.addStyle("", "", thin, vq_excel::SStyle::eHaLeft, vq_excel::SStyle::eVaBottom);
    st.number = doc.addStyle("", "0", thin, vq_excel::SStyle::eHaRight, vq_excel::SStyle::eVaBottom);
    vq_excel::SStyle total(header);
    total.numberFormat = "0";
    st.total = doc.addStyle(total);
    for (int s = 0; s < 6; ++s)
        st.status[s] = doc.addStyle(statusColour(EDocStatus(s)), "", thin, vq_excel::SStyle::eHaCenter,
                                    vq_excel::SStyle::eVaBottom);
    return st;
}

void addCount(vq_excel::SCell& cell, int value, int style) { cell.resetNumber(value, 0, style); }

void addSummarySheet(vq_excel::SDoc& doc, const SStyles& st, const vq::TVectorC<vq::CStr>& docs,
                     const vq::TVectorC<SDocResult>& results, const SCheckTotals& t) {
    vq_excel::SWorksheet& sheet = doc.addSheet("Summary");
    sheet.addRow();
    for (int c = 0; c < kNumColumns; ++c)
        sheet.addCell().resetString(kColumns[c], st.header, -1, 0);
    for (size_t i = 0; i < docs.size(); ++i) {
        const SDocResult& r = results[i];
        const SDocSummary& s = r.outcome.summary;
        sheet.addRow();
        sheet.addCell().resetString(docs[i].str(), st.text, -1, 0);
        sheet.addCell().resetString(statusText(r.status), st.status[int(r.status)], -1, 0);
        sheet.addCell().resetNumber(r.seconds, 2, st.number);
        addCount(sheet.addCell(), s.features, st.number);
        addCount(sheet.addCell(), s.characteristics, st.number);
        addCount(sheet.addCell(), s.measured, st.number);
        addCount(sheet.addCell(), s.passed, st.number);
        addCount(sheet.addCell(), s.failed, st.number);
        addCount(sheet.addCell(), s.elements, st.number);
        addCount(sheet.addCell(), s.maxDepth, st.number);
    }
    // Totals: the document counts by status, then sums of the count columns.
    sheet.addRow();
    vq::CStr counts;
    counts.cformat("%d documents: %d passed, %d failed, %d time-outs, %d crashes", t.documents,
                   t.passed, t.failed, t.timeouts, t.crashes);
    sheet.addCell().resetString("Total", st.total, -1, 0);
    sheet.addCell().resetString(counts.str(), st.total, -1, 0);
    sheet.addCell().resetNumber(t.seconds, 2, st.total);
    const int n = int(docs.size());
    for (int c = 3; c < kNumColumns; ++c) {
        vq::CStr sum;
        sum.cformat("=SUM(R[-%d]C:R[-1]C)", n > 0 ? n : 1);
        sheet.addCell().resetFormula(sum.str(), st.total, 0);
    }
    sheet.colWidth(0) = 220;
    sheet.colWidth(1) = 70;
    for (int c = 2; c < kNumColumns; ++c)
        sheet.colWidth(c) = 80;
    const vq::T2<int> area[2] = {{0, 0}, {n + 1, kNumColumns - 1}};
    sheet.setPrintArea(area);
    sheet.setPrintTitles(vq::T2<int>{0, 0});
    sheet.setOrientation(vq_excel::SWorksheet::eLandscape);
    sheet.setScale(80);
    sheet.setZoom(100);
}

void addMessagesSheet(vq_excel::SDoc& doc, const SStyles& st, const vq::TVectorC<vq::CStr>& docs,
                      const vq::TVectorC<SDocResult>& results) {
    vq_excel::SWorksheet& sheet = doc.addSheet("Messages");
    sheet.addRow();
    sheet.addCell().resetString("Document", st.header, -1, 0);
    sheet.addCell().resetString("Status", st.header, -1, 0);
    sheet.addCell().resetString("Message", st.header, -1, 0);
    for (size_t i = 0; i < docs.size(); ++i) {
        const SDocResult& r = results[i];
        if (r.message.empty())
            continue;
        sheet.addRow();
        sheet.addCell().resetString(docs[i].str(), st.text, -1, 0);
        sheet.addCell().resetString(statusText(r.status), st.status[int(r.status)], -1, 0);
        sheet.addCell().resetString(r.message.str(), st.text, -1, 0);
    }
    sheet.colWidth(0) = 220;
    sheet.colWidth(1) = 70;
    sheet.colWidth(2) = 500;
    sheet.setPrintTitles(vq::T2<int>{0, 0});
    sheet.setOrientation(vq_excel::SWorksheet::eLandscape);
}

} // namespace

bool writeCheckReport(const char* path, const vq::TVectorC<vq::CStr>& docs,
                      const vq::TVectorC<SDocResult>& results, const SCheckTotals& totals) {
    // People open the report in whatever spreadsheet program they have: namespace-correct
    // attribute names let every XML-based reader take it.
    vq_excel::SDoc doc(path, vq_excel::SDoc::eNamespaceCorrect);
    doc.setDefaultFont("Arial", 10, false, false);
    const SStyles st = addStyles(doc);
    addSummarySheet(doc, st, docs, results, totals);
    addMessagesSheet(doc, st, docs, results);
    return doc.save(path);
}

} // namespace vqk_run
