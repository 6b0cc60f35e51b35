#include "workbench/filemaker_names.h"

#include <string>

#include "calculation/unicode.h"

namespace workbench {
namespace {

// Each between two bars.
constexpr std::string_view kFunctions =
    "|"
    "Abs|Acos|AddEmbeddings|AddonUUID|Asin|Atan|Average|Base64Decode|Base64Encode|"
    "Base64EncodeRFC|BaseTableIDs|BaseTableNames|Case|Ceiling|Char|Choose|Code|Combination|"
    "ComputeModel|ConvertFromFileMakerPath|ConvertToFileMakerPath|Cos|CosineSimilarity|Count|"
    "CryptAuthCode|CryptDecrypt|CryptDecryptBase64|CryptDigest|CryptEncrypt|"
    "CryptEncryptBase64|CryptGenerateSignature|CryptVerifySignature|DatabaseNames|Date|Day|"
    "DayName|DayNameJ|DayOfWeek|DayOfYear|Degrees|Div|Evaluate|EvaluationError|Exact|"
    "ExecuteSQL|ExecuteSQLe|Exp|Extend|Factorial|FieldBounds|FieldComment|FieldIDs|"
    "FieldNames|FieldRepetitions|FieldStyle|FieldType|Filter|FilterValues|Floor|FV|"
    "GetAddonInfo|GetAsBoolean|GetAsCSS|GetAsDate|GetAsNumber|GetAsSVG|GetAsText|GetAsTime|"
    "GetAsTimestamp|GetAsURLEncoded|GetAVPlayerAttribute|GetBaseTableName|"
    "GetContainerAttribute|GetEmbedding|GetEmbeddingAsText|GetField|GetFieldName|"
    "GetFieldsOnLayout|GetHeight|GetLayoutObjectAttribute|GetLiveText|GetLiveTextAsJSON|"
    "GetModelAttributes|GetNextSerialValue|GetNthRecord|GetRAGSpaceInfo|"
    "GetRecordIDsFromFoundSet|GetRepetition|GetSensor|GetSummary|GetTableDDL|GetTextFromPDF|"
    "GetThumbnail|GetTokenCount|GetValue|GetWidth|HexDecode|HexEncode|Hiragana|Hour|If|Int|"
    "IsEmpty|IsValid|IsValidExpression|JSONDeleteElement|JSONFormatElements|JSONGetElement|"
    "JSONGetElementType|JSONListKeys|JSONListValues|JSONMakeArray|JSONParse|JSONParsedState|"
    "JSONSetElement|KanaHankaku|KanaZenkaku|KanjiNumeral|Katakana|Last|LayoutIDs|LayoutNames|"
    "LayoutObjectNames|LayoutObjectUUID|Left|LeftValues|LeftWords|Length|Let|Lg|List|ListOf|"
    "Ln|Location|LocationValues|Log|Lookup|LookupNext|Lower|Max|Middle|MiddleValues|"
    "MiddleWords|Min|Minute|Mod|Month|MonthName|MonthNameJ|NormalizeEmbedding|NPV|NumToJText|"
    "PatternCount|PCAEmbedding|Pi|PMT|Position|PredictFromModel|Proper|PV|Quote|Radians|"
    "Random|ReadQRCode|RegexFind|RegexReplace|RelationInfo|Replace|ReplaceText|RGB|Right|"
    "RightValues|RightWords|RomanHankaku|RomanZenkaku|Round|SampleStandardDeviation|"
    "ScriptIDs|ScriptNames|Seconds|Self|SerialIncrement|SetPrecision|SetRecursion|Sign|Sin|"
    "SortValues|Sqrt|StDev|StDevP|Substitute|SubtractEmbeddings|Sum|TableIDs|TableNames|Tan|"
    "TextColor|TextColorRemove|TextDecode|TextEncode|TextFont|TextFontRemove|"
    "TextFormatRemove|TextSize|TextSizeRemove|TextStyleAdd|TextStyleRemove|Time|Timestamp|"
    "TotalOf|Trim|TrimAll|Truncate|UniqueValues|Upper|ValueCount|ValueListIDs|ValueListItems|"
    "ValueListNames|Variance|VarianceP|VerifyContainer|WeekOfYear|WeekOfYearFiscal|While|"
    "WindowNames|WordCount|Year|YearName|";

// What stands in the parentheses of Get.
constexpr std::string_view kGets =
    "|"
    "AccountExtendedPrivileges|AccountGroupName|AccountName|AccountPrivilegeSetName|"
    "AccountType|ActiveFieldContents|ActiveFieldName|ActiveFieldTableName|"
    "ActiveLayoutObjectName|ActiveModifierKeys|ActivePortalRowNumber|ActiveRecordNumber|"
    "ActiveRepetitionNumber|ActiveSelectionSize|ActiveSelectionStart|AllowAbortState|"
    "AllowFormattingBarState|AllowToolbarState|ApplicationArchitecture|ApplicationLanguage|"
    "ApplicationVersion|CacheFileName|CacheFilePath|CalculationRepetitionNumber|"
    "ConnectionAttributes|ConnectionState|CurrentDate|CurrentExtendedPrivileges|"
    "CurrentHostTimestamp|CurrentPrivilegeSetName|CurrentTime|CurrentTimestamp|"
    "CurrentTimeUTCMicroseconds|CurrentTimeUTCMilliseconds|CustomMenuSetName|DesktopPath|"
    "Device|DocumentsPath|DocumentsPathListing|EncryptionState|ErrorCaptureState|"
    "FileLocaleElements|FileMakerPath|FileName|FilePath|FileSize|FoundCount|"
    "HighContrastColor|HighContrastState|HostApplicationVersion|HostIPAddress|HostName|"
    "InstalledFMPlugins|InstalledFMPluginsAsJSON|LastError|LastErrorDetail|LastErrorLocation|"
    "LastExternalErrorDetail|LastMessageChoice|LastStepTokensUsed|LayoutAccess|LayoutCount|"
    "LayoutName|LayoutNumber|LayoutTableName|LayoutViewState|MenubarState|ModifiedFields|"
    "MultiUserState|NetworkProtocol|NetworkType|OpenDataFileInfo|OpenRecordCount|PageCount|"
    "PageNumber|PersistentID|PreferencesPath|PrinterName|QuickFindText|RecordAccess|RecordID|"
    "RecordModificationCount|RecordNumber|RecordOpenCount|RecordOpenState|"
    "RegionMonitorEvents|RequestCount|RequestOmitState|RevertTransactionOnErrorState|"
    "ScreenDepth|ScreenHeight|ScreenScaleFactor|ScreenWidth|ScriptAnimationState|ScriptName|"
    "ScriptParameter|ScriptResult|SessionIdentifier|SortState|StatusAreaState|"
    "SystemAppearance|SystemDrive|SystemIPAddress|SystemLanguage|SystemLocaleElements|"
    "SystemNICAddress|SystemPlatform|SystemVersion|TemporaryPath|TextRulerVisible|"
    "TotalRecordCount|TouchKeyboardState|TransactionOpenState|TriggerCurrentPanel|"
    "TriggerExternalEvent|TriggerGestureInfo|TriggerKeystroke|TriggerModifierKeys|"
    "TriggerTargetPanel|UserCount|UserName|UseSystemFormatsState|UUID|UUIDNumber|"
    "WindowContentHeight|WindowContentWidth|WindowDesktopHeight|WindowDesktopWidth|"
    "WindowHeight|WindowLeft|WindowMode|WindowName|WindowOrientation|WindowStyle|WindowTop|"
    "WindowVisible|WindowWidth|WindowZoomLevel|";

// Of scripts.
constexpr std::string_view kSteps =
    "|"
    "Add Account|Adjust Window|Allow Formatting Bar|Allow User Abort|Arrange All Windows|"
    "AVPlayer Play|AVPlayer Set Options|AVPlayer Set Playback State|Beep|Change Password|"
    "Check Found Set|Check Record|Check Selection|Clear|Close Data File|Close File|"
    "Close Popover|Close Window|Commit Records/Requests|Commit Transaction|"
    "Configure AI Account|Configure Local Notification|Configure Machine Learning Model|"
    "Configure NFC Reading|Configure Prompt Template|Configure RAG Account|"
    "Configure Region Monitor Script|Configure Regression Model|Constrain Found Set|"
    "Convert File|Copy|Copy All Records/Requests|Copy Record/Request|Correct Word|"
    "Create Data File|Cut|Delete Account|Delete All Records|Delete File|Delete Portal Row|"
    "Delete Record/Request|Dial Phone|Duplicate Record/Request|Edit User Dictionary|Else|"
    "Else If|Enable Account|Enable Touch Keyboard|End If|End Loop|Enter Browse Mode|"
    "Enter Find Mode|Enter Preview Mode|Execute FileMaker Data API|Execute SQL|"
    "Exit Application|Exit Loop If|Exit Script|Export Field Contents|Export Records|"
    "Extend Found Set|Find Matching Records|Fine-Tune Model|Flush Cache to Disk|"
    "Freeze Window|Generate Response from Model|Get Data File Position|Get File Exists|"
    "Get File Size|Get Folder Path|Go to Field|Go to Layout|Go to List of Records|"
    "Go to Next Field|Go to Object|Go to Portal Row|Go to Previous Field|"
    "Go to Record/Request/Page|Go to Related Record|Halt Script|If|Import Records|"
    "Insert Audio/Video|Insert Calculated Result|Insert Current Date|Insert Current Time|"
    "Insert Current User Name|Insert Embedding|Insert Embedding in Found Set|Insert File|"
    "Insert from Device|Insert from Index|Insert from Last Visited|Insert from URL|"
    "Insert Image Caption|Insert Image Captions in Found Set|Insert PDF|Insert Picture|"
    "Insert Text|Install Menu Set|Install OnTimer Script|Install Plug-In File|Loop|"
    "Modify Last Find|Move/Resize Window|New File|New Record/Request|New Window|"
    "Omit Multiple Records|Omit Record|Open Data File|Open Edit Saved Finds|Open Favorites|"
    "Open File|Open File Options|Open Find/Replace|Open Help|Open Hosts|Open Launch Center|"
    "Open Manage Containers|Open Manage Data Sources|Open Manage Database|"
    "Open Manage Layouts|Open Manage Themes|Open Manage Value Lists|Open My Apps|"
    "Open Record/Request|Open Remote|Open Script Workspace|Open Settings|Open Sharing|"
    "Open Transaction|Open Upload to Host|Open URL|Paste|Pause/Resume Script|"
    "Perform AppleScript|Perform Find|Perform Find by Natural Language|Perform Find/Replace|"
    "Perform JavaScript in Web Viewer|Perform Quick Find|Perform RAG Action|Perform Script|"
    "Perform Script on Server|Perform Script on Server with Callback|Perform Semantic Find|"
    "Perform SQL Query by Natural Language|Print|Print Setup|Re-Login|Read from Data File|"
    "Recover File|Refresh Object|Refresh Portal|Refresh Window|Relookup Field Contents|"
    "Rename File|Replace Field Contents|Reset Account Password|Revert Record/Request|"
    "Revert Transaction|Save a Copy as|Save a Copy as Add-on Package|Save a Copy as XML|"
    "Save Records as Excel|Save Records as JSONL|Save Records as PDF|"
    "Save Records as Snapshot Link|Scroll Window|Select All|Select Dictionaries|"
    "Select Window|Send DDE Execute|Send Event|Send Mail|Set AI Call Logging|"
    "Set Data File Position|Set Dictionary|Set Error Capture|Set Error Logging|Set Field|"
    "Set Field By Name|Set Layout Object Animation|Set Multi-User|Set Next Serial Value|"
    "Set Revert Transaction on Error|Set Selection|Set Session Identifier|"
    "Set Use System Formats|Set Variable|Set Web Viewer|Set Window Title|Set Zoom Level|"
    "Show All Records|Show Custom Dialog|Show Omitted Only|Show/Hide Menubar|"
    "Show/Hide Text Ruler|Show/Hide Toolbars|Sort Records|Sort Records by Field|Speak|"
    "Spelling Options|Trigger Claris Connect Flow|Truncate Table|Undo/Redo|Unsort Records|"
    "Update Link|Upload to Host|View As|Write to Data File|";

bool Holds(std::string_view names, std::string_view name) {
  if (name.empty() || name.find('|') != std::string_view::npos) return false;
  const auto small = [](std::string_view text) {
    return calculation::ToUtf8(calculation::Lowercase(calculation::ToUtf16(text)));
  };
  return small(names).find("|" + small(name) + "|") != std::string::npos;
}

}  // namespace

bool IsFileMakerFunction(std::string_view name) {
  constexpr std::string_view kGet = "Get ( ";
  if (!name.starts_with(kGet)) return Holds(kFunctions, name);
  return Holds(kGets, name.substr(kGet.size(), name.size() - kGet.size() - 2));
}

bool IsFileMakerStep(std::string_view name) { return Holds(kSteps, name); }

}  // namespace workbench
