#include "core/conversion.h"

#include <exception>
#include <new>

#include "core/font_data.h"
#include "core/font_filter.h"
#include "core/general_exception.h"
#include "core/glyph_order.h"
#include "core/pg_ctrl.h"
#include "platform/paths.h"

namespace {

void ShowError(CConversionFrontEnd& ui, CPgCtrl& pg, const std::string& text) {
    ui.AppendError(text);
    if (!ui.MessagesShown()) ui.ShowMessages();
    pg.SetStatus(" Convert Error");
    pg.ResetProgress();
}

}  // namespace

ConversionOutcome RunConversion(CConversionFrontEnd& ui, CPgCtrl& pg) {
    // Readers and writers report through g_pPgCtrl for the duration of the run.
    CPgCtrlScope scope(pg);
    auto font = std::make_unique<CFontData>();
    auto filter = std::make_unique<CFontFilter>();
    auto order = std::make_unique<CGlyphOrder>();
    std::unique_ptr<CFontReader> reader;
    std::unique_ptr<CFontWriter> writer;
    ConversionOutcome outcome = ConversionOutcome::Failed;

    ui.BeginRun();
    pg.SetStatus(" Prepairing...");
    ui.LockControls();
    try {
        bool useFilter = ui.UseFilter();
        if (useFilter) {
            std::string text = ui.FilterPathText();
            if (!text.empty() && !PathExists(text)) ThrowError("Parameter Error:\n Filter file(%s) not exists", text);
        }
        ui.ClearMessages();
        reader = ui.CreateReader();
        writer = ui.CreateWriter();
        reader->CheckParameters();
        writer->CheckParameters();

        pg.SetStatus(" Order Loading...");
        writer->LoadGlyphOrder(*order);
        if (useFilter) {
            pg.SetStatus(" Filter Loading...");
            ui.LoadFilter(*filter);
        }
        filter->RestrictToOrder(*order);
        reader->Read(*font, *filter);
        if (useFilter) filter->ReportMissingLetters(*font);
        font->PrepareForOutput();
        writer->Write(*font, *order);

        ui.CommitInputHistory();
        ui.CommitOutputHistory();
        pg.SetStatus(" Finish");
        if (ui.MessagesShown() && !ui.MessagesHaveText()) ui.CloseMessages();
        outcome = ConversionOutcome::Finished;
    } catch (const CGeneralException& e) {
        ShowError(ui, pg, e.Message);
    } catch (int) {
        pg.SetStatus(" Canceled");
        pg.ResetProgress();
        outcome = ConversionOutcome::Canceled;
    } catch (const std::bad_alloc&) {
        ShowError(ui, pg, "Internal Error:\n Out of memory.");
    } catch (const std::exception& e) {
        // A library failure still ends the run with a message, never a crash.
        ShowError(ui, pg, FormatString("Internal Error:\n %s", e.what()));
    }

    writer.reset();
    reader.reset();
    if (ui.MessagesShown()) ui.RaiseMessages();
    pg.ResetProgress();
    ui.UnlockControls();
    ui.EndRun();
    order.reset();
    filter.reset();
    font.reset();
    return outcome;
}
