// Win32 functions of the headless world, with the SDK's signatures (the ANSI
// forms).  Windows, dialogs and controls are implemented in
// platform/headless (ui part), the registry and the files beside them.
#pragma once

#include "platform/headless/winapi_controls.h"

// Windows.
BOOL WINAPI IsWindow(HWND hWnd);
BOOL WINAPI IsWindowVisible(HWND hWnd);
BOOL WINAPI IsWindowEnabled(HWND hWnd);
BOOL WINAPI EnableWindow(HWND hWnd, BOOL bEnable);
BOOL WINAPI ShowWindow(HWND hWnd, int nCmdShow);
BOOL WINAPI SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags);
BOOL WINAPI GetWindowRect(HWND hWnd, LPRECT lpRect);
BOOL WINAPI GetClientRect(HWND hWnd, LPRECT lpRect);
BOOL WINAPI MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint);
int WINAPI GetSystemMetrics(int nIndex);
HWND WINAPI GetDesktopWindow(void);
HWND WINAPI GetParent(HWND hWnd);
HWND WINAPI GetWindow(HWND hWnd, UINT uCmd);
HWND WINAPI SetFocus(HWND hWnd);
HWND WINAPI GetFocus(void);
BOOL WINAPI SetForegroundWindow(HWND hWnd);
BOOL WINAPI BringWindowToTop(HWND hWnd);
HWND WINAPI GetDlgItem(HWND hDlg, int nIDDlgItem);
int WINAPI GetDlgCtrlID(HWND hWnd);
int WINAPI GetWindowTextA(HWND hWnd, LPSTR lpString, int nMaxCount);
int WINAPI GetWindowTextLengthA(HWND hWnd);
BOOL WINAPI SetWindowTextA(HWND hWnd, LPCSTR lpString);
BOOL WINAPI SetDlgItemTextA(HWND hDlg, int nIDDlgItem, LPCSTR lpString);
UINT WINAPI GetDlgItemTextA(HWND hDlg, int nIDDlgItem, LPSTR lpString, int cchMax);
BOOL WINAPI SetDlgItemInt(HWND hDlg, int nIDDlgItem, UINT uValue, BOOL bSigned);
UINT WINAPI GetDlgItemInt(HWND hDlg, int nIDDlgItem, BOOL* lpTranslated, BOOL bSigned);
LRESULT WINAPI SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI SendDlgItemMessageA(HWND hDlg, int nIDDlgItem, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL WINAPI PostMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
HWND WINAPI FindWindowA(LPCSTR lpClassName, LPCSTR lpWindowName);
int WINAPI GetClassNameA(HWND hWnd, LPSTR lpClassName, int nMaxCount);
BOOL WINAPI CheckDlgButton(HWND hDlg, int nIDButton, UINT uCheck);
UINT WINAPI IsDlgButtonChecked(HWND hDlg, int nIDButton);
BOOL WINAPI CheckRadioButton(HWND hDlg, int nIDFirstButton, int nIDLastButton, int nIDCheckButton);
UINT_PTR WINAPI SetTimer(HWND hWnd, UINT_PTR nIDEvent, UINT uElapse, TIMERPROC lpTimerFunc);
BOOL WINAPI KillTimer(HWND hWnd, UINT_PTR uIDEvent);
BOOL WINAPI DestroyWindow(HWND hWnd);
LONG WINAPI GetWindowLongA(HWND hWnd, int nIndex);
LONG WINAPI SetWindowLongA(HWND hWnd, int nIndex, LONG dwNewLong);
LONG_PTR WINAPI GetWindowLongPtrA(HWND hWnd, int nIndex);
LONG_PTR WINAPI SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR dwNewLong);
ATOM WINAPI RegisterClassA(const WNDCLASSA* lpWndClass);
BOOL WINAPI UnregisterClassA(LPCSTR lpClassName, HINSTANCE hInstance);
HWND WINAPI CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int X,
                            int Y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu, HINSTANCE hInstance,
                            LPVOID lpParam);
#define CreateWindowA(cls, name, style, x, y, w, h, parent, menu, inst, param) \
    CreateWindowExA(0, cls, name, style, x, y, w, h, parent, menu, inst, param)
LRESULT WINAPI DefWindowProcA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI DefDlgProcA(HWND hDlg, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI CallWindowProcA(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);

// Messages.
BOOL WINAPI PeekMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg);
BOOL WINAPI GetMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax);
BOOL WINAPI TranslateMessage(const MSG* lpMsg);
LRESULT WINAPI DispatchMessageA(const MSG* lpMsg);
BOOL WINAPI IsDialogMessageA(HWND hDlg, LPMSG lpMsg);
VOID WINAPI PostQuitMessage(int nExitCode);

// Dialogs and common dialogs.
INT_PTR WINAPI DialogBoxParamA(HINSTANCE hInstance, LPCSTR lpTemplateName, HWND hWndParent,
                               DLGPROC lpDialogFunc, LPARAM dwInitParam);
#define DialogBoxA(inst, tmpl, parent, proc) DialogBoxParamA(inst, tmpl, parent, proc, 0)
BOOL WINAPI EndDialog(HWND hDlg, INT_PTR nResult);
int WINAPI MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType);
BOOL WINAPI GetOpenFileNameA(LPOPENFILENAMEA lpofn);
INT_PTR WINAPI PropertySheetA(LPCPROPSHEETHEADERA lppsph);
VOID WINAPI InitCommonControls(void);
BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* picce);

// Image lists.
HIMAGELIST WINAPI ImageList_Create(int cx, int cy, UINT flags, int cInitial, int cGrow);
BOOL WINAPI ImageList_Destroy(HIMAGELIST himl);
int WINAPI ImageList_ReplaceIcon(HIMAGELIST himl, int i, HICON hicon);
int WINAPI ImageList_GetImageCount(HIMAGELIST himl);
#define ImageList_AddIcon(himl, hicon) ImageList_ReplaceIcon(himl, -1, hicon)

// Modules and resources.
HMODULE WINAPI LoadLibraryA(LPCSTR lpLibFileName);
BOOL WINAPI FreeLibrary(HMODULE hLibModule);
FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR lpProcName);
int WINAPI LoadStringA(HINSTANCE hInstance, UINT uID, LPSTR lpBuffer, int cchBufferMax);
HRSRC WINAPI FindResourceA(HMODULE hModule, LPCSTR lpName, LPCSTR lpType);
HICON WINAPI LoadIconA(HINSTANCE hInstance, LPCSTR lpIconName);
HBITMAP WINAPI LoadBitmapA(HINSTANCE hInstance, LPCSTR lpBitmapName);
HANDLE WINAPI LoadImageA(HINSTANCE hInst, LPCSTR name, UINT type, int cx, int cy, UINT fuLoad);
BOOL WINAPI DestroyIcon(HICON hIcon);
BOOL WINAPI DeleteObject(HGDIOBJ ho);

// OLE, errors, strings.
HRESULT WINAPI OleInitialize(LPVOID pvReserved);
void WINAPI OleUninitialize(void);
DWORD WINAPI GetLastError(void);
VOID WINAPI SetLastError(DWORD dwErrCode);
int WINAPI lstrcmpA(LPCSTR lpString1, LPCSTR lpString2);
int WINAPI lstrcmpiA(LPCSTR lpString1, LPCSTR lpString2);
int WINAPI lstrlenA(LPCSTR lpString);
LPSTR WINAPI lstrcpynA(LPSTR lpString1, LPCSTR lpString2, int iMaxLength);

// Registry.
LONG WINAPI RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD ulOptions, REGSAM samDesired, PHKEY phkResult);
LONG WINAPI RegCloseKey(HKEY hKey);
LONG WINAPI RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD lpReserved, LPDWORD lpType, LPBYTE lpData,
                             LPDWORD lpcbData);
LONG WINAPI RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD Reserved, DWORD dwType, const BYTE* lpData,
                           DWORD cbData);
LONG WINAPI RegQueryInfoKeyA(HKEY hKey, LPSTR lpClass, LPDWORD lpcchClass, LPDWORD lpReserved,
                             LPDWORD lpcSubKeys, LPDWORD lpcbMaxSubKeyLen, LPDWORD lpcbMaxClassLen,
                             LPDWORD lpcValues, LPDWORD lpcbMaxValueNameLen, LPDWORD lpcbMaxValueLen,
                             LPDWORD lpcbSecurityDescriptor, PFILETIME lpftLastWriteTime);
LONG WINAPI RegEnumKeyExA(HKEY hKey, DWORD dwIndex, LPSTR lpName, LPDWORD lpcchName, LPDWORD lpReserved,
                          LPSTR lpClass, LPDWORD lpcchClass, PFILETIME lpftLastWriteTime);
LONG WINAPI RegDeleteValueA(HKEY hKey, LPCSTR lpValueName);
LONG WINAPI RegCreateKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD Reserved, LPSTR lpClass, DWORD dwOptions,
                            REGSAM samDesired, LPSECURITY_ATTRIBUTES lpSecurityAttributes, PHKEY phkResult,
                            LPDWORD lpdwDisposition);

// Files.
BOOL WINAPI DeleteFileA(LPCSTR lpFileName);
BOOL WINAPI CopyFileA(LPCSTR lpExistingFileName, LPCSTR lpNewFileName, BOOL bFailIfExists);
BOOL WINAPI MoveFileExA(LPCSTR lpExistingFileName, LPCSTR lpNewFileName, DWORD dwFlags);
DWORD WINAPI GetFileAttributesA(LPCSTR lpFileName);

// The ANSI names without their suffix, as the SDK maps them without UNICODE.
#define SendMessage SendMessageA
#define PostMessage PostMessageA
#define MessageBox MessageBoxA
#define PropertySheet PropertySheetA
#define DialogBoxParam DialogBoxParamA
#define GetOpenFileName GetOpenFileNameA
#define LoadLibrary LoadLibraryA
#define LoadString LoadStringA
#define FindWindow FindWindowA
#define SetWindowText SetWindowTextA
#define GetWindowText GetWindowTextA
#define SetDlgItemText SetDlgItemTextA
#define GetDlgItemText GetDlgItemTextA
#define SendDlgItemMessage SendDlgItemMessageA
