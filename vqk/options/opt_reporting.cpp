#include "vqk/options/opt_reporting.h"

namespace vq {

namespace {

COptReporting* g_instance = nullptr;
int g_references = 0;

// The labels' ids in the default string table.
enum : int { kLabelFirst = 65100 };
SStrId label(int i) { return SStrId{kLabelFirst + i, 0}; }

const char* const kReportTypes[] = {"Summary", "Details", "Summary and details"};
const char* const kFontTypes[] = {"Arial", "Calibri", "Times New Roman"};
const char* const kAutoSave[] = {"Off", "After each job", "At the end of the run"};

int clamp(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }

} // namespace

const char* const COptReporting::kLogoFilter =
    "All Image Types(*.png, *.jpg, *.jpeg, *.jpe, *.gif, *.bmp)|*.png; *.jpg; *.jpeg; *.jpe; *.gif; *.bmp||";

COptReporting& COptReporting::create() {
    if (!g_instance)
        g_instance = new COptReporting;
    ++g_references;
    return *g_instance;
}

void COptReporting::destroy() {
    if (g_references > 0 && --g_references == 0) {
        delete g_instance;
        g_instance = nullptr;
    }
}

COptReporting* COptReporting::opt() { return g_instance; }

void COptReporting::onOptChangedHandler(void* context, SOpt*) {
    static_cast<COptReporting*>(context)->validate();
}

void COptReporting::validate() {
    screenshotLimit = clamp(screenshotLimit, 0, 1000);
    screenshotModelTransparency = clamp(screenshotModelTransparency, 0, 100);
    screenshotFontHeight = clamp(screenshotFontHeight, 6, 72);
    excelReportType = clamp(excelReportType, 0, 2);
    excelReportFontType = clamp(excelReportFontType, 0, 2);
    autoSave = clamp(autoSave, 0, 2);
    if (autoSave && !*autoSaveFolder.first())
        autoSave = 0;
}

void COptReporting::addOptions() {
    addOpt(saveReport, "SaveReport", label(0));
    addOpt(screenshotLimit, "ScreenshotLimit", label(1), false, 0, T2<int>{0, 1000});
    addOpt(screenshotModelTransparency, "ScreenshotModelTransparency", label(2), false, 0, T2<int>{0, 100});
    addOpt(screenshotFontHeight, "ScreenshotFontHeight", label(3), false, 0, T2<int>{6, 72});
    addOpt(screenshotFeatureHighlight, "ScreenshotFeatureHighlight", label(4));
    addOpt(screenshotFeatureHighlightColor, "ScreenshotFeatureHighlightColor", label(5));
    addOpt(logoCompany, "LogoCompany", label(6));
    addOptEnum(excelReportType, "ExcelReportType", label(7), kReportTypes, 3);
    addOptEnum(excelReportFontType, "ExcelReportFontType", label(8), kFontTypes, 3);
    addOpt(expandReport, "ExpandReport", label(9));
    addOptEnum(autoSave, "AutoSave", label(10), kAutoSave, 3);
    addOpt(autoSaveFolder, "AutoSaveFolder", label(11));
    addOpt(footerText, "FooterText", label(12));
    for (int i = 0; i < nOpt(); ++i)
        COptionsSet::opt(i)->addDependent(this, &onOptChangedHandler);
}

void COptReporting::postRead() { validate(); }

} // namespace vq
