# The headers of the toolkit and of the standard that most sources include, compiled once without and once with widgets:
# reading them is three quarters of a source's time. Only that; a source still includes what it uses, which the debug
# build checks, since it goes without.
set(core
    <QtCore/QByteArray> <QtCore/QFile> <QtCore/QHash> <QtCore/QList> <QtCore/QString> <QtCore/QStringList>
    <algorithm> <array> <functional> <map> <memory> <optional> <set> <stdexcept> <string_view> <utility> <vector>)
set(widgets ${core}
    <QtGui/QPainter> <QtWidgets/QApplication> <QtWidgets/QBoxLayout> <QtWidgets/QComboBox> <QtWidgets/QDialog>
    <QtWidgets/QHeaderView> <QtWidgets/QLabel> <QtWidgets/QLineEdit> <QtWidgets/QListWidget>
    <QtWidgets/QPushButton> <QtWidgets/QStyledItemDelegate> <QtWidgets/QTableView> <QtWidgets/QTreeWidget>)

ktqdde_library(headers_core SOURCES ${CMAKE_CURRENT_LIST_DIR}/Empty.cpp LINKS Qt6::Core)
target_precompile_headers(ktqdde_headers_core PRIVATE ${core})
if(TARGET Qt6::Widgets)
    ktqdde_library(headers_widgets SOURCES ${CMAKE_CURRENT_LIST_DIR}/Empty.cpp LINKS Qt6::Core Qt6::Widgets)
    target_precompile_headers(ktqdde_headers_widgets PRIVATE ${widgets})
endif()

# Whether a library sees widgets, through whatever it links.
function(ktqdde_sees_widgets library answer)
    set(seen FALSE)
    get_target_property(links ${library} LINK_LIBRARIES)
    foreach(link IN LISTS links)
        if(link STREQUAL "Qt6::Widgets")
            set(seen TRUE)
        elseif(link MATCHES "^KtQdDe::(.+)$")
            ktqdde_sees_widgets(ktqdde_${CMAKE_MATCH_1} seen)
        endif()
        if(seen)
            break()
        endif()
    endforeach()
    set(${answer} ${seen} PARENT_SCOPE)
endfunction()

get_property(libraries GLOBAL PROPERTY KTQDDE_LIBRARIES)
foreach(library IN LISTS libraries)
    if(library MATCHES "headers_")
        continue()
    endif()
    ktqdde_sees_widgets(${library} widgets_seen)
    if(widgets_seen)
        target_precompile_headers(${library} REUSE_FROM ktqdde_headers_widgets)
    else()
        target_precompile_headers(${library} REUSE_FROM ktqdde_headers_core)
    endif()
endforeach()
