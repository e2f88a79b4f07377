// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Every text of the interface, in the language in force at the moment of the call.
///
/// Interface thread only. A template's argument is inserted as it is. The three texts of an
/// entry differ where their languages do and in nothing else on purpose: brackets, case and
/// spaces are as translators left them.
namespace L10n {

/// An entry of the catalogue: its text in each language, in the order of Lang.
///
/// The texts are constants in the program; choosing one copies and allocates nothing.
class Text {
public:
    constexpr Text(QStringView ko, QStringView en, QStringView ja) : m_texts{ko, en, ja} {}

    [[nodiscard]] QString operator()() const;

private:
    QStringView m_texts[3];
};

/// An entry that has its argument inserted where %1 stands.
template <class Argument>
class TextWith final : Text {
public:
    using Text::Text;

    [[nodiscard]] QString operator()(const Argument& argument) const {
        return Text::operator()().arg(argument);
    }
};

inline constexpr Text packages{u"패키지", u"Packages", u"パッケージ"};
inline constexpr Text actions{u"동작", u"Actions", u"アクション"};
inline constexpr Text system{u"시스템", u"System", u"システム"};
inline constexpr Text formulae{u"Formulae", u"Formulae", u"Formulae"};
inline constexpr Text casks{u"Casks", u"Casks", u"Casks"};
inline constexpr Text updates{u"업데이트", u"Updates", u"アップデート"};
inline constexpr Text search{u"검색", u"Search", u"検索"};
inline constexpr Text taps{u"Taps", u"Taps", u"Taps"};
inline constexpr Text settings{u"설정", u"Settings", u"設定"};
inline constexpr Text about{u"정보", u"About", u"情報"};
inline constexpr Text cancel{u"취소", u"Cancel", u"キャンセル"};
inline constexpr Text close{u"닫기", u"Close", u"閉じる"};
inline constexpr Text install{u"설치", u"Install", u"インストール"};
inline constexpr Text uninstall{u"삭제", u"Uninstall", u"アンインストール"};
inline constexpr Text update{u"업데이트", u"Update", u"アップデート"};
inline constexpr Text updateAll{u"모두 업데이트", u"Update All", u"すべてアップデート"};
inline constexpr Text remove{u"제거", u"Remove", u"削除"};
inline constexpr Text add{u"추가", u"Add", u"追加"};
inline constexpr Text installed{u"설치됨", u"Installed", u"インストール済み"};
inline constexpr Text outdated{u"업데이트 필요", u"outdated", u"更新あり"};
inline constexpr Text dependency{u"의존성", u"dependency", u"依存"};
inline constexpr Text preview{u"미리보기", u"Preview", u"プレビュー"};
inline constexpr Text output{u"출력", u"Output", u"出力"};
inline constexpr Text running{u"실행 중...", u"Running...", u"実行中..."};
inline constexpr Text language{u"언어", u"Language", u"言語"};
inline constexpr Text loadingFormulae{u"Formulae 로딩 중...", u"Loading formulae...",
                                      u"Formulaeを読み込み中..."};
inline constexpr Text noFormulaeInstalled{u"설치된 formulae 없음", u"No formulae installed",
                                          u"インストール済みのformulaeなし"};
inline constexpr Text filterFormulae{u"formulae 검색", u"Filter formulae", u"formulaeを検索"};
inline constexpr Text refreshFormulaeList{u"formulae 목록 새로고침", u"Refresh formulae list",
                                          u"formulaeリストを更新"};
inline constexpr Text uninstallPackage{u"패키지 삭제", u"Uninstall Package",
                                       u"パッケージをアンインストール"};
inline constexpr TextWith<QString> confirmUninstall{u"%1을(를) 삭제하시겠습니까?",
                                                    u"Are you sure you want to uninstall %1?",
                                                    u"%1をアンインストールしますか？"};
inline constexpr Text loadingCasks{u"Casks 로딩 중...", u"Loading casks...",
                                   u"Casksを読み込み中..."};
inline constexpr Text noCasksInstalled{u"설치된 cask 없음", u"No casks installed",
                                       u"インストール済みのcaskなし"};
inline constexpr Text filterCasks{u"cask 검색", u"Filter casks", u"caskを検索"};
inline constexpr Text refreshCaskList{u"cask 목록 새로고침", u"Refresh cask list",
                                      u"caskリストを更新"};
inline constexpr Text uninstallCask{u"Cask 삭제", u"Uninstall Cask", u"Caskをアンインストール"};
inline constexpr Text searching{u"검색 중...", u"Searching...", u"検索中..."};
inline constexpr Text typeToSearch{u"Homebrew 패키지 검색", u"Type to search Homebrew packages",
                                   u"Homebrewパッケージを検索"};
inline constexpr Text noResultsFound{u"결과 없음", u"No results found", u"結果なし"};
inline constexpr Text searchHomebrew{u"Homebrew 패키지 검색", u"Search Homebrew packages",
                                     u"Homebrewパッケージを検索"};
inline constexpr Text checkingForUpdates{u"업데이트 확인 중...", u"Checking for updates...",
                                         u"アップデートを確認中..."};
inline constexpr Text allUpToDate{u"모든 패키지가 최신 상태입니다", u"All packages are up to date",
                                  u"すべてのパッケージは最新です"};
inline constexpr Text updateAllPackages{u"모든 패키지 업데이트", u"Update all packages",
                                        u"すべてのパッケージをアップデート"};
inline constexpr Text checkForUpdates{u"업데이트 확인", u"Check for updates",
                                      u"アップデートを確認"};
inline constexpr Text loadingTaps{u"Taps 로딩 중...", u"Loading taps...", u"Tapsを読み込み中..."};
inline constexpr Text noTapsConfigured{u"구성된 tap 없음", u"No taps configured",
                                       u"設定済みのtapなし"};
inline constexpr Text refreshTaps{u"tap 새로고침", u"Refresh taps", u"tapを更新"};
inline constexpr Text addTap{u"Tap 추가", u"Add Tap", u"Tapを追加"};
inline constexpr Text addTapHelp{u"tap 추가", u"Add tap", u"tapを追加"};
inline constexpr Text removeTapHelp{u"tap 제거", u"Remove tap", u"tapを削除"};
inline constexpr Text enterTapName{u"tap 이름을 입력하세요 (예: user/repo)",
                                   u"Enter the tap name (e.g., user/repo)",
                                   u"tap名を入力してください（例：user/repo）"};
inline constexpr Text addingTap{u"tap 추가 중...", u"Adding tap...", u"tapを追加中..."};
inline constexpr Text removeTap{u"Tap 제거", u"Remove Tap", u"Tapを削除"};
inline constexpr TextWith<QString> confirmRemoveTap{
    u"'%1' tap을 제거하시겠습니까?", u"Are you sure you want to remove the tap '%1'?",
    u"tap '%1'を削除しますか？"};
inline constexpr Text cleanupTitle{u"정리", u"Cleanup", u"クリーンアップ"};
inline constexpr Text cleanup = cleanupTitle;
inline constexpr Text cleanupDesc{
    u"이전 버전, 캐시 파일, 사용하지 않는 의존성을 제거합니다.",
    u"Remove old versions, cache files, and unused dependencies.",
    u"古いバージョン、キャッシュファイル、未使用の依存関係を削除します。"};
inline constexpr Text runCleanup{u"정리 실행", u"Run Cleanup", u"クリーンアップ実行"};
inline constexpr Text doctor{u"진단", u"Doctor", u"Doctor"};
inline constexpr Text doctorDesc{u"Homebrew 설치에 잠재적인 문제가 있는지 확인합니다.",
                                 u"Check your Homebrew installation for potential problems.",
                                 u"Homebrewインストールの問題を確認します。"};
inline constexpr Text runDoctor{u"진단 실행", u"Run Doctor", u"Doctor実行"};
inline constexpr Text diagnosis{u"진단 결과", u"Diagnosis", u"診断結果"};
inline constexpr Text cleanupAndDoctor{u"정리 & 진단", u"Cleanup & Doctor",
                                       u"クリーンアップ & Doctor"};
inline constexpr Text confirmCleanup{
    u"이전 버전과 캐시 파일이 삭제됩니다. 계속하시겠습니까?",
    u"This will remove old versions and cache files. Continue?",
    u"古いバージョンとキャッシュファイルが削除されます。続行しますか？"};
inline constexpr Text nothingToCleanUp{u"정리할 항목이 없습니다.", u"Nothing to clean up.",
                                       u"クリーンアップする項目はありません。"};
inline constexpr Text formula{u"Formula", u"Formula", u"Formula"};
inline constexpr Text cask{u"Cask", u"Cask", u"Cask"};
inline constexpr Text updateAvailable{u"업데이트 가능", u"Update available", u"アップデートあり"};
inline constexpr Text description{u"설명", u"Description", u"説明"};
inline constexpr Text details{u"상세 정보", u"Details", u"詳細"};
inline constexpr Text name{u"이름", u"Name", u"名前"};
inline constexpr Text version{u"버전", u"Version", u"バージョン"};
inline constexpr Text installedVersion{u"설치 버전", u"Installed", u"インストール済み"};
inline constexpr Text homepage{u"홈페이지", u"Homepage", u"ホームページ"};
inline constexpr TextWith<int> dependencies{u"의존성 (%1)", u"Dependencies (%1)", u"依存関係 (%1)"};
inline constexpr Text loadingInfo{u"정보 로딩 중...", u"Loading info...", u"情報を読み込み中..."};
inline constexpr Text packageNotFound{u"패키지를 찾을 수 없음", u"Package not found",
                                      u"パッケージが見つかりません"};
inline constexpr Text homePage{u"홈페이지", u"Home Page", u"ホームページ"};
inline constexpr Text contact{u"연락처", u"Contact", u"お問い合わせ"};
inline constexpr Text openSourceInfo{u"오픈소스 정보", u"Open Source Info", u"オープンソース情報"};
inline constexpr Text restartToApply{u"언어 변경을 적용하려면 앱을 재시작하세요.",
                                     u"Restart app to apply language change.",
                                     u"言語変更を適用するにはアプリを再起動してください。"};
inline constexpr Text checkForUpdatesMenu{u"업데이트 확인...", u"Check for Updates...",
                                          u"アップデートを確認..."};
inline constexpr Text selectCategory{u"카테고리를 선택하세요", u"Select a category",
                                     u"カテゴリーを選択してください"};
inline constexpr Text brewNotFound{u"Homebrew를 찾을 수 없음", u"Homebrew Not Found",
                                   u"Homebrewが見つかりません"};
inline constexpr Text brewNotFoundDesc{
    u"Lumora은 Homebrew가 설치되어 있어야 합니다.\n먼저 Homebrew를 설치하세요.",
    u"Lumora requires Homebrew to be installed.\nPlease install Homebrew first.",
    u"Lumoraを使用するにはHomebrewが必要です。\n先にHomebrewをインストールしてください。"};
inline constexpr Text installHomebrew{u"Homebrew 설치", u"Install Homebrew",
                                      u"Homebrewをインストール"};
inline constexpr Text updateComplete{u"업데이트 완료", u"Update Complete", u"アップデート完了"};
inline constexpr TextWith<QString> updatedTo{u"v%1(으)로 업데이트되었습니다.", u"Updated to v%1.",
                                             u"v%1にアップデートしました。"};
inline constexpr Text upToDate{u"최신 버전", u"Up to Date", u"最新バージョン"};
inline constexpr TextWith<QString> runningLatest{u"최신 버전(v%1)을 사용 중입니다.",
                                                 u"You are running the latest version (v%1).",
                                                 u"最新バージョン（v%1）を使用中です。"};
inline constexpr Text updateCheckFailed{u"업데이트 확인 실패", u"Update Check Failed",
                                        u"アップデート確認失敗"};
inline constexpr Text cannotConnect{u"서버에 연결할 수 없습니다.", u"Cannot connect to server.",
                                    u"サーバーに接続できません。"};
inline constexpr Text updateCheckError{u"업데이트 확인에 실패했습니다.",
                                       u"Failed to check for updates.",
                                       u"アップデートの確認に失敗しました。"};
inline constexpr TextWith<QString> newVersionAvailable{
    u"새 버전 v%1 사용 가능", u"New Version v%1 Available", u"新バージョン v%1 が利用可能"};
inline constexpr TextWith<QString> updateInfoText{
    u"현재: v%1\n\n업데이트 후 앱이 재시작됩니다.",
    u"Current: v%1\n\nThe app will restart after updating.",
    u"現在: v%1\n\nアップデート後アプリが再起動します。"};
inline constexpr Text updateNow{u"지금 업데이트", u"Update Now", u"今すぐアップデート"};
inline constexpr Text later{u"나중에", u"Later", u"後で"};
inline constexpr Text ok{u"확인", u"OK", u"OK"};
inline constexpr Text downloadFailed{u"다운로드 실패", u"Download failed", u"ダウンロード失敗"};
inline constexpr Text appBundleNotFound{u"앱 번들을 찾을 수 없음", u"App bundle not found",
                                        u"アプリバンドルが見つかりません"};
inline constexpr Text extractFailed{u"압축 해제 실패", u"Extract failed", u"展開失敗"};

} // namespace L10n
