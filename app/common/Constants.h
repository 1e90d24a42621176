#pragma once

#include "app/common/Version.h"

#include <QPoint>
#include <QRect>
#include <QString>

/// The constants that several units of the editor quote: texts, names, positions.
///
/// Units    positions and sizes are in logical pixels; rectangles are x, y, width, height within the parent widget.
/// Texts    keep their "\r\n" line breaks as written.

// Menus
inline const QString k_fileMenuString = QStringLiteral("&File");
inline const QString k_editMenuString = QStringLiteral("&Edit");
inline const QString k_helpMenuString = QStringLiteral("&Help");

inline const QString k_openString = QStringLiteral("&Open");
inline const QString k_saveString = QStringLiteral("&Save");
inline const QString k_saveAsString = QStringLiteral("Save &As...");
inline const QString k_copyString = QStringLiteral("&Copy");
inline const QString k_pasteString = QStringLiteral("&Paste");
inline const QString k_revrtString = QStringLiteral("&Revert To Initial State");
inline const QString k_resetString = QStringLiteral("&Load Factory Preset");
inline const QString k_manualString = QStringLiteral("&Manual");
inline const QString k_aboutString = QStringLiteral("&About");

inline const QString k_openCommand = QStringLiteral("Ctrl+O");
inline const QString k_saveCommand = QStringLiteral("Ctrl+S");
inline const QString k_saveAsCommand;
inline const QString k_copyCommand = QStringLiteral("Ctrl+C");
inline const QString k_pasteCommand = QStringLiteral("Ctrl+V");
inline const QString k_revertCommand;
inline const QString k_resetCommand;
inline const QString k_manualCommand = QStringLiteral("F1");
inline const QString k_aboutCommand;

inline constexpr QRect k_menuRect{100, 18, 110, 21};

// Messages
inline const QString k_checkSave = QStringLiteral("The parameter is modified.\r\nSave?");
inline const QString k_fileExists =
    QStringLiteral("\"%1\" already exists.\r\nThe data will be overwritten.\r\nContinue?");
inline const QString k_openError = QStringLiteral("Failed to open the data.");
inline const QString k_saveError = QStringLiteral("Failed to save.");
inline const QString k_revertTitle;
inline const QString k_revertMessage =
    QStringLiteral("All parameters will be restored to their initial state.\r\nContinue?");
inline const QString k_resetTitle;
inline const QString k_resetMessage =
    QStringLiteral("All the current parameters will be restored to the factory settings.\r\nContinue?");
inline const QString k_errorManual = QStringLiteral("Failed to open the manual.");
inline const QString k_connectionErrorTitle;
inline const QString k_connectionErrorMessage =
    QStringLiteral("Lost the connection.\r\n"
                   "Please connect the device properly to the computer, and restart this editor.");

// Product
inline const QString k_editorName = QStringLiteral("KTZ-JX");
inline const QString k_version = QStringLiteral("KTZ-JX ZANDO_CONTROLLER Editor Ver." KTZ_VERSION);
inline const QString k_copyright = QStringLiteral("\u00a9 2026 The KTZ-JX Editor Developers");
inline constexpr QPoint k_editorNamePos{116, 500};
inline constexpr QPoint k_versionPos{116, 515};
inline constexpr QPoint k_copyrightPos{116, 538};
inline const QString k_manualFileName = QStringLiteral("KTZ-JX_Editor_OperationManual.pdf");

// MIDI ports
inline const QString k_jxPortName = QStringLiteral("Trellwick KTZ-JX");
inline const QString k_jxEditorPortName = QStringLiteral("Trellwick KTZ-JX Port3");
inline const QString k_space = QStringLiteral(" ");

// What other MIDI programs see of the editor, and of the program without a window
inline constexpr const char* k_editorProgramName = "KTZ-JX Editor";
inline constexpr const char* k_ctlProgramName = "KTZ-JX Control";

// Fonts and text
inline constexpr Qt::GlobalColor k_defaultTextColor = Qt::black;
inline const QString k_fontGLT7Bold = QStringLiteral("Morlan GLT7 Bold");
inline const QString k_fontGLT8 = QStringLiteral("Morlan GLT8 Regular");
inline const QString k_fontGLT10Bold = QStringLiteral("Morlan GLT10 Bold");

// Clipboard formats, one for each control of a knob page; "konb" is the name under which knobs are exchanged
inline const QString k_mimeType_Knob = QStringLiteral("application/x-morlan-ktz-jx-konb");
inline const QString k_mimeType_CCNum = QStringLiteral("application/x-morlan-ktz-jx-ccnum");
inline const QString k_mimeType_MIDICh = QStringLiteral("application/x-morlan-ktz-jx-midich");
inline const QString k_mimeType_Max = QStringLiteral("application/x-morlan-ktz-jx-max");
inline const QString k_mimeType_Min = QStringLiteral("application/x-morlan-ktz-jx-min");
inline const QString k_mimeType_LEDType = QStringLiteral("application/x-morlan-ktz-jx-led-type");

// Layout of a knob page
inline constexpr QRect k_knobRect{0, 0, 87, 87};
inline constexpr QRect k_ledTypeRect{8, 104, 73, 15};
inline constexpr QRect k_ccNumRect{8, 142, 73, 15};
inline constexpr QRect k_midiChRect{8, 180, 73, 15};
inline constexpr QRect k_maxRect{8, 218, 73, 15};
inline constexpr QRect k_minRect{8, 256, 73, 15};
inline const QString k_knobLEDTypeImagePath = QStringLiteral(":images/ktz_jx_led.png");

// Settings file
inline const QString k_docType = QStringLiteral("KTZJXEditor");
inline const QString k_extension = QStringLiteral("KTZ-JX files (*.CJX)");
inline const QString k_paramTag = QStringLiteral("parameters");
inline const QString k_controlViewTag = QStringLiteral("controlview");
inline const QString k_attributeVersion = QStringLiteral("version");
inline const QString k_fileVersion = QStringLiteral("1.0");
inline const QString k_baseTagName = QStringLiteral("key");
inline const QString k_openDialogTitle = QStringLiteral("Open file");
inline const QString k_saveDialogTitle = QStringLiteral("Save file");
inline const QString k_defaultFileName = QStringLiteral("untitled");
