// Every widget of the framework, every kind of layout, the log panel and the themes in one window,
// to look at.
#pragma once

#include "ze/qt/GMainWindow.h"

class QTabWidget;

namespace gallery {

class GalleryWindow : public ze::qt::GMainWindow {
public:
    void setup() override;
    void ini() override;

    /// Saves a picture of each page in each theme into the folder and quits; exit status 1 if one
    /// could not be saved.
    void save_pictures(const QString& folder);

private:
    void gen_bars();
    void gen_widgets(ze::qt::GPanel* parent);
    void gen_buttons(ze::qt::GPanel* parent);
    void gen_choices(ze::qt::GPanel* parent);
    void gen_texts(ze::qt::GPanel* parent);
    void gen_sliders(ze::qt::GPanel* parent);
    void gen_layouts(ze::qt::GPanel* parent);
    void gen_stack(ze::qt::GPanel* parent);
    void gen_controls(ze::qt::GPanel* parent);
    void write_a_line_of_each_level();
    void save_next_picture(const QString& folder, int picture);

    QTabWidget* tabs = nullptr;
};

}  // namespace gallery
