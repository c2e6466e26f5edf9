# Headers of the toolkit that most sources of a library include, compiled once. For the sanitizer build, which takes
# longest; the other builds go without, so that a source that forgets an include is found.
set(KTQDDE_CORE_HEADERS
    <QtCore/QByteArray> <QtCore/QFile> <QtCore/QHash> <QtCore/QList> <QtCore/QString> <QtCore/QStringList>
    <algorithm> <array> <functional> <map> <memory> <optional> <set> <stdexcept> <string_view> <utility> <vector>)
set(KTQDDE_WIDGET_HEADERS ${KTQDDE_CORE_HEADERS}
    <QtGui/QPainter> <QtWidgets/QApplication> <QtWidgets/QBoxLayout> <QtWidgets/QComboBox> <QtWidgets/QDialog>
    <QtWidgets/QHeaderView> <QtWidgets/QLabel> <QtWidgets/QLineEdit> <QtWidgets/QListWidget>
    <QtWidgets/QPushButton> <QtWidgets/QStyledItemDelegate> <QtWidgets/QTableView> <QtWidgets/QTreeWidget>)

foreach(library embedded_sqlite embedded_catalogue embedded_project embedded_history embedded_exchange embedded_host
        cli_reading cli_printing cli_batch cli_commands)
    target_precompile_headers(ktqdde_${library} PRIVATE ${KTQDDE_CORE_HEADERS})
endforeach()
foreach(library dialogs embedded_windows editor_messages editor_project editor_steps editor_dialogs editor_window)
    target_precompile_headers(ktqdde_${library} PRIVATE ${KTQDDE_WIDGET_HEADERS})
endforeach()
target_precompile_headers(ktqdde-pictures PRIVATE ${KTQDDE_WIDGET_HEADERS})
