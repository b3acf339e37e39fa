// The modal dialog "Log Options". It edits a working copy of the log panel's configuration; only OK
// hands it over.
#pragma once

#include "ze/log/LogConfig.h"
#include "ze/qt/dialogs/GDialog.h"
#include "ze/tools/Listener.h"

namespace ze::qt {

class GMainWindow;
class GPanel;
class GPanelLogView;

class GDialogOption : public GDialog {
public:
    /// A null parent ends the program.
    explicit GDialogOption(GMainWindow* parent);

    /// Builds the contents from the parent's log panel; without one the program ends.
    void ini() override;

    Listener<unsigned int> font_size_changed;  ///< points, on OK
    Listener<bool> auto_scroll_changed;        ///< on OK

private:
    void gen_row_level(GPanel* rows);
    void gen_row_font_size(GPanel* rows);
    void gen_row_scroll(GPanel* rows);
    void gen_columns(GPanel* rows);
    void gen_row_buttons(GPanel* rows);

    void on_cancel();
    void on_ok();
    [[nodiscard]] GPanelLogView* log_panel() const;

    GMainWindow* winMain;
    log::LogConfig config;  // the working copy
};

}  // namespace ze::qt
