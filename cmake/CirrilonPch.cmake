# Precompiled headers: the common ones of Qt Core and the standard library, with gtest for the tests
# and with Qt Widgets for the windows. They only save time (a quarter of a build from nothing, more
# after a change of a common header): each file includes what it uses, and the build without them,
# the linter's, is the one that proves it.
option(CIRRILON_PCH "Use precompiled headers" ON)

set(CIRRILON_PCH_CORE
    <QByteArray> <QDateTime> <QDir> <QFile> <QMutex> <QObject> <QString> <QStringList> <QThread> <QTimer>
    <QVector> <algorithm> <array> <atomic> <chrono> <cmath> <cstdint> <functional> <map> <memory>
    <optional> <set> <string> <string_view> <vector>)
# No <QTest>: it depends on which Qt modules a target links, so that GCC wouldn't share it.
set(CIRRILON_PCH_TESTS
    ${CIRRILON_PCH_CORE} <QSignalSpy> <QTemporaryDir> <gmock/gmock.h> <gtest/gtest.h>)
set(CIRRILON_PCH_WIDGETS
    ${CIRRILON_PCH_CORE} <QAction> <QApplication> <QCheckBox> <QComboBox> <QDialog> <QFormLayout> <QGridLayout>
    <QGroupBox> <QIcon> <QLabel> <QLineEdit> <QListWidget> <QMainWindow> <QMenu> <QPainter> <QPushButton>
    <QSpinBox> <QTableWidget> <QTextEdit> <QToolButton> <QVBoxLayout> <QWidget>)

if(CIRRILON_PCH)
    target_compile_options(cirrilon_compile INTERFACE
        # GCC 12 warns falsely of copies in std::string operators that come from such a header.
        "$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess;-Wno-stringop-overflow;-Wno-stringop-overread;-Wno-array-bounds>"
        $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
endif()

# cirrilon_pch(name KIND targets...): owner of the headers of a kind, compiled once for all that use
# them; `targets` give the include folders.
function(cirrilon_pch name kind)
    if(NOT CIRRILON_PCH)
        return()
    endif()
    set(source ${PROJECT_BINARY_DIR}/pch/${name}.cpp)
    if(NOT EXISTS ${source})
        file(WRITE ${source} "// Holds the precompiled headers only.\n")
    endif()
    add_library(${name} OBJECT ${source})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE cirrilon_compile ${ARGN})
    target_precompile_headers(${name} PRIVATE ${CIRRILON_PCH_${kind}})
endfunction()

# cirrilon_use_pch(target name): the target's files see the headers of that owner first.
function(cirrilon_use_pch target name)
    if(CIRRILON_PCH)
        target_precompile_headers(${target} REUSE_FROM ${name})
    endif()
endfunction()
