#pragma once

/// The control ids of the dialog `CAutoConfigDlg` and of its wizard form; the rectangles are in
/// `templates::AutoConfig`.
namespace dialogs::autoconfig {

enum ControlId : int {
    DeleteItemsButton = 1014,
    PickerButton = 1015,
    GridPlace = 1013, ///< only marks where the grid stands
    AddConditionButton = 1011,
    RemoveConditionButton = 1012,
    RuleRows = 1008,
    Attributes = 1009,
    Conditions = 1010,
    LowerOperator = 1017,
    UpperOperator = 1018,
    LowerBound = 1019,
    UpperBound = 1020,
    EqualOperator = 1021,
    ValueCombo = 1022,
    CategoryTree = 2000,
    PageTab = 2001,
    StepWarning = 2002, ///< the wizard form's, as are those up to `NoteLink`
    BillLibraryLabel = 2003,
    BillLibrary = 2004,
    QuotaLibraryLabel = 2005,
    QuotaLibrary = 2006,
    NoteLink = 2007,
    NewFileButton = 7000,
    LoadFileButton = 7001,
    SaveAsButton = 7002,
    AddRuleButton = 7003,
    CopyRuleButton = 7004,
    DeleteRuleButton = 7005,
    PreviousStepButton = 7006, ///< the wizard form's, as are the next two
    NextStepButton = 7007,
    CancelStepButton = 7008,
    MoveDownButton = 7009,
    MoveUpButton = 7010,
    NetDiskButton = 7011,
    Grid = 50002,
};

} // namespace dialogs::autoconfig
