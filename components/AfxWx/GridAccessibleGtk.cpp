// The objects that readers find of a grid on GTK (ATK's).

#ifdef __WXGTK__

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include <gtk/gtk-a11y.h>
#include <gtk/gtk.h>

#include "AfxWx/detail/GridAccessible.h"
#include "AfxWx/detail/GridPeer.h"

namespace AfxWx
{
namespace
{

class AtkGrid;

// What GObject makes. `grid` is null when the grid has gone before its object has.
struct AtkGridTable
{
    GtkWidgetAccessible base;
    AtkGrid* grid;
};
struct AtkGridCell
{
    AtkObject base; // whose parent is the table
    int row, column;
};

GType TableType();
GType CellType();

class AtkGrid : public GridObject
{
public:
    explicit AtkGrid(const GridAccessible& grid);
    AtkGrid(const AtkGrid&) = delete;
    AtkGrid& operator=(const AtkGrid&) = delete;
    ~AtkGrid() override;

    void Name(const wxString& name) override { atk_object_set_name(m_table, name.utf8_str()); }
    void CursorAt(CellPlace place) override;
    void Changed(Afx::Part parts) override;
    void EditorStands(wxWindow& editor) override;

    const GridAccessible& Told() const noexcept { return m_grid; }
    const Lattice::CGrid& Model() const noexcept { return m_grid.Peer().Grid(); }
    AtkObject* Table() const noexcept { return m_table; }
    /// The object of a cell, of which the caller has a share; null where there is no cell.
    AtkObject* RefCell(CellPlace place);
    AtkObject* RefCell(int index);
    /// A heading lasts as long as the table; null where nothing stands.
    AtkObject* Heading(CellPlace place);
    AtkObject* RefEditor(CellPlace place) const;
    /// Of the cell in the selection, row by row; -1: none.
    int IndexOfSelected(int nth) const;
    void Forget(const AtkGridCell& cell) { m_cells.erase({cell.row, cell.column}); }

private:
    const GridAccessible& m_grid;
    AtkObject* m_table;
    AtkObject* m_current = nullptr;
    std::map<CellPlace, AtkObject*> m_cells; // that somebody holds
    std::map<CellPlace, AtkObject*> m_headings;
    Lattice::CGrid::Block m_selected{};
    int m_rows = 0, m_columns = 0;
};

// From the objects to the grid, null when it has gone.

AtkGrid* AtkGridOf(gpointer table) { return static_cast<AtkGridTable*>(table)->grid; }
AtkGridCell& CellOf(gpointer cell) { return *static_cast<AtkGridCell*>(cell); }
AtkGrid* AtkGridOfCell(gpointer cell) { return AtkGridOf(CellOf(cell).base.accessible_parent); }
CellPlace PlaceOf(gpointer cell) { return {CellOf(cell).row, CellOf(cell).column}; }
int ColumnsOf(gpointer table) { return AtkGridOf(table) ? AtkGridOf(table)->Model().GetColumnCount() : 0; }
int RowsOf(gpointer table) { return AtkGridOf(table) ? AtkGridOf(table)->Model().GetRowCount() : 0; }

// The toolkit's windows of a kind share one class. Of those that are grids the object stands beside the window.

using GetAccessible = AtkObject* (*)(GtkWidget*);
GetAccessible g_getPlain = nullptr;
constexpr char kOwnObject[] = "AfxWx-grid-object";

AtkObject* GetOwnOrPlain(GtkWidget* window)
{
    auto* const own = static_cast<AtkObject*>(g_object_get_data(G_OBJECT(window), kOwnObject));
    return own ? own : g_getPlain(window);
}

void WindowGoes(GtkWidget*, gpointer object) { gtk_accessible_set_widget(GTK_ACCESSIBLE(object), nullptr); }

/// The window's object, which the window keeps.
AtkObject* MakeTable(GtkWidget* window)
{
    GtkWidgetClass* const kind = GTK_WIDGET_GET_CLASS(window);
    if (kind->get_accessible != GetOwnOrPlain)
        g_getPlain = std::exchange(kind->get_accessible, GetOwnOrPlain);
    auto* const table = static_cast<AtkObject*>(g_object_new(TableType(), "widget", window, nullptr));
    atk_object_initialize(table, window);
    atk_object_set_role(table, ATK_ROLE_TABLE);
    g_object_set_data_full(G_OBJECT(window), kOwnObject, table, g_object_unref);
    g_signal_connect(window, "destroy", G_CALLBACK(WindowGoes), table);
    return table;
}

AtkGrid::AtkGrid(const GridAccessible& grid)
    : m_grid(grid), m_table(MakeTable(static_cast<GtkWidget*>(grid.Peer().View().GetGridWindow()->GetHandle())))
{
    g_object_ref(m_table);
    static_cast<AtkGridTable*>(static_cast<gpointer>(m_table))->grid = this;
}

AtkGrid::~AtkGrid()
{
    static_cast<AtkGridTable*>(static_cast<gpointer>(m_table))->grid = nullptr;
    for (const auto& [place, cell] : m_cells)
        atk_object_notify_state_change(cell, ATK_STATE_DEFUNCT, TRUE);
    for (const auto& [place, heading] : m_headings)
        g_object_unref(heading);
    g_clear_object(&m_current);
    g_object_unref(m_table);
}

AtkObject* AtkGrid::RefCell(CellPlace place)
{
    if (!m_grid.Has(place))
        return nullptr;
    if (const auto found = m_cells.find(place); found != m_cells.end())
        return ATK_OBJECT(g_object_ref(found->second));
    auto* const cell = static_cast<AtkObject*>(g_object_new(CellType(), nullptr));
    CellOf(cell).row = place.row;
    CellOf(cell).column = place.column;
    atk_object_set_parent(cell, m_table);
    cell->role = place.row < 0      ? ATK_ROLE_TABLE_COLUMN_HEADER
                 : place.column < 0 ? ATK_ROLE_TABLE_ROW_HEADER
                                    : ATK_ROLE_TABLE_CELL;
    m_cells.emplace(place, cell);
    return cell;
}

AtkObject* AtkGrid::RefCell(int index)
{
    const int columns = Model().GetColumnCount();
    return index < 0 || columns == 0 ? nullptr : RefCell(CellPlace{index / columns, index % columns});
}

AtkObject* AtkGrid::Heading(CellPlace place)
{
    if (!m_grid.Has(place) || m_grid.Sentence(place).IsEmpty())
        return nullptr;
    AtkObject*& heading = m_headings[place];
    if (!heading)
        heading = RefCell(place);
    return heading;
}

AtkObject* AtkGrid::RefEditor(CellPlace place) const
{
    const NativePeer* const editor = PeerOf(Model().GetEditor());
    if (!editor || !m_grid.IsCurrent(place))
        return nullptr;
    return ATK_OBJECT(g_object_ref(gtk_widget_get_accessible(static_cast<GtkWidget*>(editor->Native()->GetHandle()))));
}

int AtkGrid::IndexOfSelected(int nth) const
{
    const Lattice::CGrid::Block block = Model().GetSelection();
    const int across = block.right - block.left + 1, down = block.bottom - block.top + 1;
    if (Model().GetCurrentRow() < 0 || nth < 0 || nth >= across * down)
        return -1;
    return (block.top + nth / across) * Model().GetColumnCount() + block.left + nth % across;
}

// What readers are told.

void AtkGrid::CursorAt(CellPlace place)
{
    AtkObject* left = std::exchange(m_current, RefCell(place));
    if (left && left != m_current) {
        atk_object_get_name(left); // which is the whole sentence again
        atk_object_notify_state_change(left, ATK_STATE_FOCUSED, FALSE);
    }
    g_signal_emit_by_name(m_table, "active-descendant-changed", m_current);
    atk_object_notify_state_change(m_current, ATK_STATE_FOCUSED, TRUE);
    g_clear_object(&left);
}

void AtkGrid::Changed(Afx::Part parts)
{
    const int rows = Model().GetRowCount(), columns = Model().GetColumnCount();
    if (std::exchange(m_rows, rows) != rows || std::exchange(m_columns, columns) != columns)
        g_signal_emit_by_name(m_table, "model-changed");
    if (Has(parts, Afx::Part::Items | Afx::Part::Cells))
        for (const auto& [place, cell] : m_cells)
            if (cell->name && m_grid.Sentence(place) != cell->name)
                g_object_notify(G_OBJECT(cell), "accessible-name");
    const Lattice::CGrid::Block now = Model().GetSelection(), before = std::exchange(m_selected, now);
    if (now.top != before.top || now.left != before.left || now.bottom != before.bottom || now.right != before.right)
        g_signal_emit_by_name(m_table, "selection-changed");
}

/// It is a child of its cell, though its window stands in the grid's.
void AtkGrid::EditorStands(wxWindow& editor)
{
    AtkObject* cell = RefCell({Model().GetCurrentRow(), Model().GetCurrentColumn()});
    if (cell)
        atk_object_set_parent(gtk_widget_get_accessible(static_cast<GtkWidget*>(editor.GetHandle())), cell);
    g_clear_object(&cell);
}

// The table.

AtkObjectClass* g_plainTable = nullptr;

AtkStateSet* RefTableStates(AtkObject* table)
{
    AtkStateSet* const states = g_plainTable->ref_state_set(table);
    const AtkGrid* const grid = AtkGridOf(table);
    if (!grid)
        return states;
    atk_state_set_add_state(states, ATK_STATE_MANAGES_DESCENDANTS);
    atk_state_set_add_state(states, ATK_STATE_MULTISELECTABLE);
    if (grid->Told().HasKeyboard())
        atk_state_set_add_state(states, ATK_STATE_FOCUSED);
    return states;
}

void DescribeTable(gpointer kind, gpointer)
{
    g_plainTable = static_cast<AtkObjectClass*>(g_type_class_peek_parent(kind));
    auto* const object = static_cast<AtkObjectClass*>(kind);
    object->get_n_children = [](AtkObject* table) { return RowsOf(table) * ColumnsOf(table); };
    object->ref_child = [](AtkObject* table, int i) {
        return AtkGridOf(table) ? AtkGridOf(table)->RefCell(i) : nullptr;
    };
    object->ref_state_set = RefTableStates;
}

AtkObject* HeadingOf(gpointer table, CellPlace place)
{
    return AtkGridOf(table) ? AtkGridOf(table)->Heading(place) : nullptr;
}

const char* NameOf(AtkObject* object) { return object ? atk_object_get_name(object) : nullptr; }

gboolean IsSelected(gpointer table, CellPlace place)
{
    return AtkGridOf(table) && AtkGridOf(table)->Told().IsSelected(place);
}

void DescribeAsTable(gpointer interface, gpointer)
{
    auto* const table = static_cast<AtkTableIface*>(interface);
    table->get_n_rows = [](AtkTable* it) { return RowsOf(it); };
    table->get_n_columns = [](AtkTable* it) { return ColumnsOf(it); };
    table->ref_at = [](AtkTable* it, int row, int column) -> AtkObject* {
        return AtkGridOf(it) && row >= 0 && column >= 0 ? AtkGridOf(it)->RefCell({row, column}) : nullptr;
    };
    table->get_index_at = [](AtkTable* it, int row, int column) { return row * ColumnsOf(it) + column; };
    table->get_row_at_index = [](AtkTable* it, int i) { return ColumnsOf(it) > 0 && i >= 0 ? i / ColumnsOf(it) : -1; };
    table->get_column_at_index = [](AtkTable* it, int i) {
        return ColumnsOf(it) > 0 && i >= 0 ? i % ColumnsOf(it) : -1;
    };
    table->get_row_extent_at = table->get_column_extent_at = [](AtkTable*, int, int) { return 1; };
    table->get_column_header = [](AtkTable* it, int column) { return HeadingOf(it, {-1, column}); };
    table->get_row_header = [](AtkTable* it, int row) { return HeadingOf(it, {row, -1}); };
    table->get_column_description = [](AtkTable* it, int column) { return NameOf(HeadingOf(it, {-1, column})); };
    table->get_row_description = [](AtkTable* it, int row) { return NameOf(HeadingOf(it, {row, -1})); };
    table->is_selected = [](AtkTable* it, int row, int column) { return IsSelected(it, {row, column}); };
}

void DescribeSelection(gpointer interface, gpointer)
{
    auto* const selection = static_cast<AtkSelectionIface*>(interface);
    selection->get_selection_count = [](AtkSelection* it) {
        int count = 0;
        if (const AtkGrid* const grid = AtkGridOf(it); grid && grid->Model().GetCurrentRow() >= 0) {
            const Lattice::CGrid::Block block = grid->Model().GetSelection();
            count = (block.right - block.left + 1) * (block.bottom - block.top + 1);
        }
        return count;
    };
    selection->ref_selection = [](AtkSelection* it, int nth) {
        return AtkGridOf(it) ? AtkGridOf(it)->RefCell(AtkGridOf(it)->IndexOfSelected(nth)) : nullptr;
    };
    selection->is_child_selected = [](AtkSelection* it, int i) {
        return ColumnsOf(it) > 0 ? IsSelected(it, {i / ColumnsOf(it), i % ColumnsOf(it)}) : FALSE;
    };
    selection->add_selection = [](AtkSelection* it, int i) -> gboolean {
        if (i < 0 || i >= RowsOf(it) * ColumnsOf(it))
            return FALSE;
        AtkGridOf(it)->Told().Peer().Visit({i / ColumnsOf(it), i % ColumnsOf(it)}, false);
        return TRUE;
    };
}

/// Where the table stands in coordinates of this kind.
wxPoint OriginOf(AtkObject* table, AtkCoordType kind)
{
    int x = 0, y = 0, width = 0, height = 0;
    if (kind != ATK_XY_PARENT)
        atk_component_get_extents(ATK_COMPONENT(table), &x, &y, &width, &height, kind);
    return {x, y};
}

void DescribeTablePlace(gpointer interface, gpointer)
{
    static_cast<AtkComponentIface*>(interface)->ref_accessible_at_point = [](AtkComponent* it, int x, int y,
                                                                             AtkCoordType kind) -> AtkObject* {
        AtkGrid* const grid = AtkGridOf(it);
        const CellPlace place = grid ? grid->Told().At(wxPoint(x, y) - OriginOf(grid->Table(), kind)) : CellPlace();
        return place.row >= 0 && place.column >= 0 ? grid->RefCell(place) : nullptr;
    };
}

// A cell, and a heading.

const char* GetCellName(AtkObject* cell)
{
    const AtkGrid* const grid = AtkGridOfCell(cell);
    g_free(cell->name);
    cell->name = g_strdup(grid ? static_cast<const char*>(grid->Told().Sentence(PlaceOf(cell))) : "");
    return cell->name;
}

AtkStateSet* RefCellStates(AtkObject* it)
{
    AtkStateSet* const states = atk_state_set_new();
    const auto add = [states](AtkStateType state, bool holds = true) {
        if (holds)
            atk_state_set_add_state(states, state);
    };
    const AtkGrid* const grid = AtkGridOfCell(it);
    const CellPlace place = PlaceOf(it);
    if (!grid || !grid->Told().Has(place)) {
        add(ATK_STATE_DEFUNCT);
        return states;
    }
    const wxWindow& window = *grid->Told().Peer().View().GetGridWindow();
    const bool isHeading = place.row < 0 || place.column < 0;
    add(ATK_STATE_TRANSIENT);
    add(ATK_STATE_VISIBLE);
    add(ATK_STATE_SHOWING,
        window.IsShownOnScreen() && (isHeading || wxRect(window.GetSize()).Intersects(grid->Told().AreaOf(place))));
    add(ATK_STATE_ENABLED, grid->Model().IsWindowEnabled());
    add(ATK_STATE_SENSITIVE, grid->Model().IsWindowEnabled());
    if (isHeading)
        return states;
    const Lattice::Cell cell = grid->Model().GetCell(place.row, place.column);
    const auto* const number = std::get_if<int>(&cell.value);
    const bool isEditable = grid->Model().IsCellEditable(place.row, place.column);
    add(ATK_STATE_FOCUSABLE);
    add(ATK_STATE_FOCUSED, grid->Told().IsCurrent(place) && grid->Told().HasKeyboard());
    add(ATK_STATE_SELECTABLE);
    add(ATK_STATE_SELECTED, grid->Told().IsSelected(place));
    add(isEditable ? ATK_STATE_EDITABLE : ATK_STATE_READ_ONLY);
    add(ATK_STATE_INVALID_ENTRY, cell.error);
    add(ATK_STATE_CHECKABLE, cell.format == Lattice::Format::CheckBox);
    add(ATK_STATE_CHECKED, cell.format == Lattice::Format::CheckBox && number && *number);
    add(ATK_STATE_HAS_POPUP, cell.format == Lattice::Format::Combo && isEditable);
    return states;
}

void DescribeCell(gpointer kind, gpointer)
{
    static auto* const s_plain = static_cast<AtkObjectClass*>(g_type_class_peek_parent(kind));
    auto* const object = static_cast<AtkObjectClass*>(kind);
    object->get_name = GetCellName;
    object->ref_state_set = RefCellStates;
    object->get_index_in_parent = [](AtkObject* it) {
        const CellPlace place = PlaceOf(it);
        return place.row < 0 || place.column < 0 ? -1 : place.row * ColumnsOf(it->accessible_parent) + place.column;
    };
    object->get_n_children = [](AtkObject* it) {
        AtkObject* editor = AtkGridOfCell(it) ? AtkGridOfCell(it)->RefEditor(PlaceOf(it)) : nullptr;
        const int count = editor ? 1 : 0;
        g_clear_object(&editor);
        return count;
    };
    object->ref_child = [](AtkObject* it, int i) -> AtkObject* {
        return i == 0 && AtkGridOfCell(it) ? AtkGridOfCell(it)->RefEditor(PlaceOf(it)) : nullptr;
    };
    static_cast<GObjectClass*>(kind)->finalize = [](GObject* it) {
        if (AtkGrid* const grid = AtkGridOfCell(it))
            grid->Forget(CellOf(it));
        static_cast<GObjectClass*>(static_cast<gpointer>(s_plain))->finalize(it);
    };
}

GPtrArray* Headings(gpointer cell, CellPlace place)
{
    GPtrArray* const headings = g_ptr_array_new_with_free_func(g_object_unref);
    if (AtkObject* const heading = HeadingOf(CellOf(cell).base.accessible_parent, place))
        g_ptr_array_add(headings, g_object_ref(heading));
    return headings;
}

void DescribeAsCell(gpointer interface, gpointer)
{
    auto* const cell = static_cast<AtkTableCellIface*>(interface);
    cell->get_row_span = cell->get_column_span = [](AtkTableCell*) { return 1; };
    cell->get_position = [](AtkTableCell* it, int* row, int* column) -> gboolean {
        std::tie(*row, *column) = std::pair(CellOf(it).row, CellOf(it).column);
        return TRUE;
    };
    cell->get_row_column_span = [](AtkTableCell* it, int* row, int* column, int* down, int* across) -> gboolean {
        *down = *across = 1;
        return atk_table_cell_get_position(it, row, column);
    };
    cell->get_column_header_cells = [](AtkTableCell* it) { return Headings(it, {-1, CellOf(it).column}); };
    cell->get_row_header_cells = [](AtkTableCell* it) { return Headings(it, {CellOf(it).row, -1}); };
    cell->get_table = [](AtkTableCell* it) { return ATK_OBJECT(g_object_ref(CellOf(it).base.accessible_parent)); };
}

void DescribeCellPlace(gpointer interface, gpointer)
{
    auto* const component = static_cast<AtkComponentIface*>(interface);
    component->get_extents = [](AtkComponent* it, int* x, int* y, int* width, int* height, AtkCoordType kind) {
        *x = *y = *width = *height = -1;
        const AtkGrid* const grid = AtkGridOfCell(it);
        if (!grid || !grid->Told().Has(PlaceOf(it)))
            return;
        const wxRect area = grid->Told().AreaOf(PlaceOf(it));
        const wxPoint place = area.GetPosition() + OriginOf(grid->Table(), kind);
        std::tie(*x, *y, *width, *height) = std::tuple(place.x, place.y, area.width, area.height);
    };
    component->grab_focus = [](AtkComponent* it) -> gboolean {
        const CellPlace place = PlaceOf(it);
        const bool isCell = AtkGridOfCell(it) && place.row >= 0 && place.column >= 0;
        if (isCell)
            AtkGridOfCell(it)->Told().Peer().Visit(place, false);
        return isCell;
    };
}

bool CanEdit(gpointer cell)
{
    return AtkGridOfCell(cell) && AtkGridOfCell(cell)->Model().IsCellEditable(CellOf(cell).row, CellOf(cell).column);
}

void DescribeCellAction(gpointer interface, gpointer)
{
    auto* const action = static_cast<AtkActionIface*>(interface);
    action->get_n_actions = [](AtkAction* it) { return CanEdit(it) ? 1 : 0; };
    action->get_name = [](AtkAction*, int i) { return i == 0 ? "edit" : nullptr; };
    action->do_action = [](AtkAction* it, int i) -> gboolean {
        const bool edits = i == 0 && CanEdit(it);
        if (edits)
            AtkGridOfCell(it)->Told().Peer().Visit(PlaceOf(it), true);
        return edits;
    };
}

// Their types.

struct Offered
{
    GType interface;
    GInterfaceInitFunc describe;
};

GType Register(GType parent, const char* name, std::size_t size, GClassInitFunc describe,
               std::initializer_list<Offered> offers)
{
    GTypeQuery plain;
    g_type_query(parent, &plain);
    const GTypeInfo info{static_cast<guint16>(plain.class_size),
                         nullptr,
                         nullptr,
                         describe,
                         nullptr,
                         nullptr,
                         static_cast<guint16>(size),
                         0,
                         nullptr,
                         nullptr};
    const GType type = g_type_register_static(parent, name, &info, GTypeFlags{});
    for (const Offered& offered : offers) {
        const GInterfaceInfo own{offered.describe, nullptr, nullptr};
        g_type_add_interface_static(type, offered.interface, &own);
    }
    return type;
}

GType TableType()
{
    static const GType s_type =
        Register(GTK_TYPE_WIDGET_ACCESSIBLE, "AfxWxGridTable", sizeof(AtkGridTable), DescribeTable,
                 {{ATK_TYPE_TABLE, DescribeAsTable},
                  {ATK_TYPE_SELECTION, DescribeSelection},
                  {ATK_TYPE_COMPONENT, DescribeTablePlace}});
    return s_type;
}

/// Without a text of its own, which readers would say in the place of the sentence.
GType CellType()
{
    static const GType s_type = Register(ATK_TYPE_OBJECT, "AfxWxGridCell", sizeof(AtkGridCell), DescribeCell,
                                         {{ATK_TYPE_COMPONENT, DescribeCellPlace},
                                          {ATK_TYPE_TABLE_CELL, DescribeAsCell},
                                          {ATK_TYPE_ACTION, DescribeCellAction}});
    return s_type;
}

} // namespace

std::unique_ptr<GridObject> MakeGridObject(const GridAccessible& grid) { return std::make_unique<AtkGrid>(grid); }

} // namespace AfxWx

#endif
