// The persisted settings of the program: QSettings with a version check, typed reads that give a
// default for what cannot be read, and nodes kept as one text each. The place on disk follows from
// the organisation and application names that are set before the first use. Splitters are not kept.
//
// A setting may be a password. On a platform with file permissions the file is readable by its
// owner only, from before the first byte is written. A file that is damaged, in a line or in a
// node, is copied before it is written over, once in a run; the copy has ".unreadable" behind its
// name. A value that could harm the program when read is dropped from the file before, and kept in
// that copy: of what QSettings keeps as a stream only the types are read back that
// store::read_value knows. The store is this one file: those that QSettings could fall back on are
// not looked at.
#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSettings>
#include <QSize>
#include <QString>
#include <QVariant>

class QSplitter;

namespace ze::store {
class GNode;
}

namespace ze::qt {

class GSettings : public QSettings {
public:
    /// When set, GApp::prepare_settings wipes the store at every start.
    static bool flagDebug;

    /// The settings of the program, made at the first call and kept until the process ends. Belongs
    /// to the GUI thread.
    [[nodiscard]] static GSettings& instance();

    ~GSettings() override;

    void init() {}

    /// Keeps a node under the key as its text. What cannot be read later gives an empty or partial
    /// node, the log lines of GNode::from_qstring, and a copy of the file.
    void set_node(const QString& key, const store::GNode& node);
    [[nodiscard]] store::GNode get_node(const QString& key) const;
    void set_app_node(const store::GNode& node);
    [[nodiscard]] store::GNode get_app_node() const;

    /// The node of one window, by the window's complete name.
    void set_window_node(const store::GNode& node, const QString& name);
    [[nodiscard]] store::GNode get_window_node(const QString& name) const;

    /// Values under a key; with an owner under the key of that object's name. A value that is
    /// missing or of another type reads as the default.
    void set(const QString& key, const QVariant& value, const QObject* owner);
    void set(const QString& key, const Qt::GlobalColor& color, const QObject* owner);
    [[nodiscard]] unsigned get_uint(const QString& key, unsigned def, const QObject* owner) const;
    [[nodiscard]] int get_int(const QString& key, int def, const QObject* owner) const;
    [[nodiscard]] float get_float(const QString& key, float def, const QObject* owner) const;
    [[nodiscard]] double get_double(const QString& key, double def, const QObject* owner) const;
    [[nodiscard]] QColor get_color(const QString& key, QColor def, const QObject* owner) const;

    void set_rect(const QString& key, const QRect& value);
    void set_point(const QString& key, const QPoint& value);
    void set_size(const QString& key, const QSize& value);
    [[nodiscard]] QRect get_rect(const QString& key, const QRect& def) const;
    [[nodiscard]] QPoint get_point(const QString& key, const QPoint& def) const;
    [[nodiscard]] QSize get_size(const QString& key, const QSize& def) const;

    void set_theme(unsigned theme);
    [[nodiscard]] unsigned get_theme() const;
    void set_config_version(unsigned version);
    [[nodiscard]] unsigned get_config_version() const;
    void set_log_level(unsigned level);
    [[nodiscard]] unsigned get_log_level() const;

    /// The stored version that `check_update_config` found, and the minimum that it was given; 0
    /// before.
    [[nodiscard]] unsigned get_version() const noexcept { return versionCurrent; }
    [[nodiscard]] unsigned get_version_minimum() const noexcept { return versionMinimum; }

    /// Removes every key, on disk too.
    void clear_config();

    /// Removes the copy of a damaged settings file too, where one was kept.
    void remove_unreadable_file();

    /// True when the store was older than the minimum: its version is raised, and its keys are
    /// removed if `clearIfOlder`. A file without a readable version is copied before.
    bool check_update_config(unsigned minimum, bool clearIfOlder);

    /// Both only check that there is a splitter; positions are not kept.
    void save_splitter_state(QSplitter* splitter);
    void restore_splitter_state(QSplitter* splitter);

    /// Writes what is unwritten now, instead of at the next turn of the event loop. On a full disk
    /// nothing is written, the file stays as it was and the values stay in memory; the event loop
    /// tries again every second.
    void sync();

protected:
    GSettings();

    bool event(QEvent* event) override;

private:
    /// The file as it is before QSettings reads it.
    struct Place {
        QString name;
        bool isKept = false;  ///< a copy was made of what stood there
    };

    explicit GSettings(const Place& place);
    [[nodiscard]] static Place find_place();

    void make_file_private();
    bool prepare_write();
    [[nodiscard]] bool has_config_version() const;
    void look_for_damage();
    void keep_unreadable_file() const;

    unsigned versionCurrent = 0;
    unsigned versionMinimum = 0;
    mutable bool isKept;
};

}  // namespace ze::qt
