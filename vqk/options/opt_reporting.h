// vqk/options/opt_reporting.h
//
// COptReporting: the process's option set of report output, named "Reporting", shared
// by reference count. Its options, their defaults and ranges:
//
//   SaveReport                      bool    true
//   ScreenshotLimit                 int     20        0 to 1000 screenshots per report
//   ScreenshotModelTransparency     int     50        0 to 100 percent
//   ScreenshotFontHeight            int     12        6 to 72 points
//   ScreenshotFeatureHighlight      bool    true
//   ScreenshotFeatureHighlightColor color   255 0 0
//   LogoCompany                     text    ""        an image file (kLogoFilter)
//   ExcelReportType                 enum    0         0 summary, 1 details, 2 both
//   ExcelReportFontType             enum    0         0 Arial, 1 Calibri, 2 Times New Roman
//   ExpandReport                    bool    false
//   AutoSave                        enum    0         0 off, 1 after each job, 2 at the end
//   AutoSaveFolder                  text    ""
//   FooterText                      text    ""
//
// validate() brings the numbers into their ranges and switches AutoSave off while no
// folder is set; every change made through a record runs it.
//
//   vq::COptReporting& r = vq::COptReporting::create();
//   r.read(vq::optionsFilePath());
//   ...
//   vq::COptReporting::destroy();
#pragma once

#include "vqk/options/options_set.h"

namespace vq {

class VQK_API COptReporting : public COptionsSet {
public:
    static const char* const kLogoFilter;

    static COptReporting& create();  // makes the instance or adds a reference
    static void destroy();           // drops a reference; the last one deletes it
    static COptReporting* opt();     // the instance, null when none

    static void onOptChangedHandler(void* context, SOpt* changed);
    void validate();

    bool saveReport = true;
    int screenshotLimit = 20;
    int screenshotModelTransparency = 50;
    int screenshotFontHeight = 12;
    bool screenshotFeatureHighlight = true;
    CColor screenshotFeatureHighlightColor{255, 0, 0};
    CStringSt logoCompany;
    int excelReportType = 0;
    int excelReportFontType = 0;
    bool expandReport = false;
    int autoSave = 0;
    CStringSt autoSaveFolder;
    CStringSt footerText;

    void postRead() override;

protected:
    void addOptions() override;

private:
    COptReporting() : COptionsSet("Reporting") {}
};

} // namespace vq
