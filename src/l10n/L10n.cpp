// SPDX-License-Identifier: MIT
#include "L10n.h"

#include "LangManager.h"

using namespace Qt::StringLiterals;

namespace {

/// The literals are constants in the program; choosing one copies and allocates nothing.
const QString& pick(const QString& ko, const QString& en, const QString& ja) {
    switch (LangManager::shared().current()) {
    case Lang::ko:
        return ko;
    case Lang::en:
        return en;
    case Lang::ja:
        break;
    }
    return ja;
}

} // namespace

QString L10n::packages() {
    return pick(u"패키지"_s, u"Packages"_s, u"パッケージ"_s);
}

QString L10n::actions() {
    return pick(u"동작"_s, u"Actions"_s, u"アクション"_s);
}

QString L10n::system() {
    return pick(u"시스템"_s, u"System"_s, u"システム"_s);
}

QString L10n::formulae() {
    return pick(u"Formulae"_s, u"Formulae"_s, u"Formulae"_s);
}

QString L10n::casks() {
    return pick(u"Casks"_s, u"Casks"_s, u"Casks"_s);
}

QString L10n::updates() {
    return pick(u"업데이트"_s, u"Updates"_s, u"アップデート"_s);
}

QString L10n::search() {
    return pick(u"검색"_s, u"Search"_s, u"検索"_s);
}

QString L10n::taps() {
    return pick(u"Taps"_s, u"Taps"_s, u"Taps"_s);
}

QString L10n::settings() {
    return pick(u"설정"_s, u"Settings"_s, u"設定"_s);
}

QString L10n::about() {
    return pick(u"정보"_s, u"About"_s, u"情報"_s);
}

QString L10n::cancel() {
    return pick(u"취소"_s, u"Cancel"_s, u"キャンセル"_s);
}

QString L10n::close() {
    return pick(u"닫기"_s, u"Close"_s, u"閉じる"_s);
}

QString L10n::install() {
    return pick(u"설치"_s, u"Install"_s, u"インストール"_s);
}

QString L10n::uninstall() {
    return pick(u"삭제"_s, u"Uninstall"_s, u"アンインストール"_s);
}

QString L10n::update() {
    return pick(u"업데이트"_s, u"Update"_s, u"アップデート"_s);
}

QString L10n::updateAll() {
    return pick(u"모두 업데이트"_s, u"Update All"_s, u"すべてアップデート"_s);
}

QString L10n::remove() {
    return pick(u"제거"_s, u"Remove"_s, u"削除"_s);
}

QString L10n::add() {
    return pick(u"추가"_s, u"Add"_s, u"追加"_s);
}

QString L10n::installed() {
    return pick(u"설치됨"_s, u"Installed"_s, u"インストール済み"_s);
}

QString L10n::outdated() {
    return pick(u"업데이트 필요"_s, u"outdated"_s, u"更新あり"_s);
}

QString L10n::dependency() {
    return pick(u"의존성"_s, u"dependency"_s, u"依存"_s);
}

QString L10n::preview() {
    return pick(u"미리보기"_s, u"Preview"_s, u"プレビュー"_s);
}

QString L10n::output() {
    return pick(u"출력"_s, u"Output"_s, u"出力"_s);
}

QString L10n::running() {
    return pick(u"실행 중..."_s, u"Running..."_s, u"実行中..."_s);
}

QString L10n::language() {
    return pick(u"언어"_s, u"Language"_s, u"言語"_s);
}

QString L10n::loadingFormulae() {
    return pick(u"Formulae 로딩 중..."_s, u"Loading formulae..."_s, u"Formulaeを読み込み中..."_s);
}

QString L10n::noFormulaeInstalled() {
    return pick(u"설치된 formulae 없음"_s, u"No formulae installed"_s,
                u"インストール済みのformulaeなし"_s);
}

QString L10n::filterFormulae() {
    return pick(u"formulae 검색"_s, u"Filter formulae"_s, u"formulaeを検索"_s);
}

QString L10n::refreshFormulaeList() {
    return pick(u"formulae 목록 새로고침"_s, u"Refresh formulae list"_s, u"formulaeリストを更新"_s);
}

QString L10n::uninstallPackage() {
    return pick(u"패키지 삭제"_s, u"Uninstall Package"_s, u"パッケージをアンインストール"_s);
}

QString L10n::confirmUninstall(const QString& name) {
    return pick(name + u"을(를) 삭제하시겠습니까?"_s,
                u"Are you sure you want to uninstall "_s + name + u"?"_s,
                name + u"をアンインストールしますか？"_s);
}

QString L10n::loadingCasks() {
    return pick(u"Casks 로딩 중..."_s, u"Loading casks..."_s, u"Casksを読み込み中..."_s);
}

QString L10n::noCasksInstalled() {
    return pick(u"설치된 cask 없음"_s, u"No casks installed"_s, u"インストール済みのcaskなし"_s);
}

QString L10n::filterCasks() {
    return pick(u"cask 검색"_s, u"Filter casks"_s, u"caskを検索"_s);
}

QString L10n::refreshCaskList() {
    return pick(u"cask 목록 새로고침"_s, u"Refresh cask list"_s, u"caskリストを更新"_s);
}

QString L10n::uninstallCask() {
    return pick(u"Cask 삭제"_s, u"Uninstall Cask"_s, u"Caskをアンインストール"_s);
}

QString L10n::searching() {
    return pick(u"검색 중..."_s, u"Searching..."_s, u"検索中..."_s);
}

QString L10n::typeToSearch() {
    return pick(u"Homebrew 패키지 검색"_s, u"Type to search Homebrew packages"_s,
                u"Homebrewパッケージを検索"_s);
}

QString L10n::noResultsFound() {
    return pick(u"결과 없음"_s, u"No results found"_s, u"結果なし"_s);
}

QString L10n::searchHomebrew() {
    return pick(u"Homebrew 패키지 검색"_s, u"Search Homebrew packages"_s,
                u"Homebrewパッケージを検索"_s);
}

QString L10n::checkingForUpdates() {
    return pick(u"업데이트 확인 중..."_s, u"Checking for updates..."_s,
                u"アップデートを確認中..."_s);
}

QString L10n::allUpToDate() {
    return pick(u"모든 패키지가 최신 상태입니다"_s, u"All packages are up to date"_s,
                u"すべてのパッケージは最新です"_s);
}

QString L10n::updateAllPackages() {
    return pick(u"모든 패키지 업데이트"_s, u"Update all packages"_s,
                u"すべてのパッケージをアップデート"_s);
}

QString L10n::checkForUpdates() {
    return pick(u"업데이트 확인"_s, u"Check for updates"_s, u"アップデートを確認"_s);
}

QString L10n::loadingTaps() {
    return pick(u"Taps 로딩 중..."_s, u"Loading taps..."_s, u"Tapsを読み込み中..."_s);
}

QString L10n::noTapsConfigured() {
    return pick(u"구성된 tap 없음"_s, u"No taps configured"_s, u"設定済みのtapなし"_s);
}

QString L10n::refreshTaps() {
    return pick(u"tap 새로고침"_s, u"Refresh taps"_s, u"tapを更新"_s);
}

QString L10n::addTap() {
    return pick(u"Tap 추가"_s, u"Add Tap"_s, u"Tapを追加"_s);
}

QString L10n::addTapHelp() {
    return pick(u"tap 추가"_s, u"Add tap"_s, u"tapを追加"_s);
}

QString L10n::removeTapHelp() {
    return pick(u"tap 제거"_s, u"Remove tap"_s, u"tapを削除"_s);
}

QString L10n::enterTapName() {
    return pick(u"tap 이름을 입력하세요 (예: user/repo)"_s,
                u"Enter the tap name (e.g., user/repo)"_s,
                u"tap名を入力してください（例：user/repo）"_s);
}

QString L10n::addingTap() {
    return pick(u"tap 추가 중..."_s, u"Adding tap..."_s, u"tapを追加中..."_s);
}

QString L10n::removeTap() {
    return pick(u"Tap 제거"_s, u"Remove Tap"_s, u"Tapを削除"_s);
}

QString L10n::confirmRemoveTap(const QString& tap) {
    return pick(u"'"_s + tap + u"' tap을 제거하시겠습니까?"_s,
                u"Are you sure you want to remove the tap '"_s + tap + u"'?"_s,
                u"tap '"_s + tap + u"'を削除しますか？"_s);
}

QString L10n::cleanupTitle() {
    return pick(u"정리"_s, u"Cleanup"_s, u"クリーンアップ"_s);
}

QString L10n::cleanup() {
    return cleanupTitle();
}

QString L10n::cleanupDesc() {
    return pick(u"이전 버전, 캐시 파일, 사용하지 않는 의존성을 제거합니다."_s,
                u"Remove old versions, cache files, and unused dependencies."_s,
                u"古いバージョン、キャッシュファイル、未使用の依存関係を削除します。"_s);
}

QString L10n::runCleanup() {
    return pick(u"정리 실행"_s, u"Run Cleanup"_s, u"クリーンアップ実行"_s);
}

QString L10n::doctor() {
    return pick(u"진단"_s, u"Doctor"_s, u"Doctor"_s);
}

QString L10n::doctorDesc() {
    return pick(u"Homebrew 설치에 잠재적인 문제가 있는지 확인합니다."_s,
                u"Check your Homebrew installation for potential problems."_s,
                u"Homebrewインストールの問題を確認します。"_s);
}

QString L10n::runDoctor() {
    return pick(u"진단 실행"_s, u"Run Doctor"_s, u"Doctor実行"_s);
}

QString L10n::diagnosis() {
    return pick(u"진단 결과"_s, u"Diagnosis"_s, u"診断結果"_s);
}

QString L10n::cleanupAndDoctor() {
    return pick(u"정리 & 진단"_s, u"Cleanup & Doctor"_s, u"クリーンアップ & Doctor"_s);
}

QString L10n::confirmCleanup() {
    return pick(u"이전 버전과 캐시 파일이 삭제됩니다. 계속하시겠습니까?"_s,
                u"This will remove old versions and cache files. Continue?"_s,
                u"古いバージョンとキャッシュファイルが削除されます。続行しますか？"_s);
}

QString L10n::nothingToCleanUp() {
    return pick(u"정리할 항목이 없습니다."_s, u"Nothing to clean up."_s,
                u"クリーンアップする項目はありません。"_s);
}

QString L10n::formula() {
    return pick(u"Formula"_s, u"Formula"_s, u"Formula"_s);
}

QString L10n::cask() {
    return pick(u"Cask"_s, u"Cask"_s, u"Cask"_s);
}

QString L10n::updateAvailable() {
    return pick(u"업데이트 가능"_s, u"Update available"_s, u"アップデートあり"_s);
}

QString L10n::description() {
    return pick(u"설명"_s, u"Description"_s, u"説明"_s);
}

QString L10n::details() {
    return pick(u"상세 정보"_s, u"Details"_s, u"詳細"_s);
}

QString L10n::name() {
    return pick(u"이름"_s, u"Name"_s, u"名前"_s);
}

QString L10n::version() {
    return pick(u"버전"_s, u"Version"_s, u"バージョン"_s);
}

QString L10n::installedVersion() {
    return pick(u"설치 버전"_s, u"Installed"_s, u"インストール済み"_s);
}

QString L10n::homepage() {
    return pick(u"홈페이지"_s, u"Homepage"_s, u"ホームページ"_s);
}

QString L10n::dependencies(int count) {
    return pick(u"의존성 ("_s + QString::number(count) + u")"_s,
                u"Dependencies ("_s + QString::number(count) + u")"_s,
                u"依存関係 ("_s + QString::number(count) + u")"_s);
}

QString L10n::loadingInfo() {
    return pick(u"정보 로딩 중..."_s, u"Loading info..."_s, u"情報を読み込み中..."_s);
}

QString L10n::packageNotFound() {
    return pick(u"패키지를 찾을 수 없음"_s, u"Package not found"_s,
                u"パッケージが見つかりません"_s);
}

QString L10n::homePage() {
    return pick(u"홈페이지"_s, u"Home Page"_s, u"ホームページ"_s);
}

QString L10n::contact() {
    return pick(u"연락처"_s, u"Contact"_s, u"お問い合わせ"_s);
}

QString L10n::openSourceInfo() {
    return pick(u"오픈소스 정보"_s, u"Open Source Info"_s, u"オープンソース情報"_s);
}

QString L10n::restartToApply() {
    return pick(u"언어 변경을 적용하려면 앱을 재시작하세요."_s,
                u"Restart app to apply language change."_s,
                u"言語変更を適用するにはアプリを再起動してください。"_s);
}

QString L10n::checkForUpdatesMenu() {
    return pick(u"업데이트 확인..."_s, u"Check for Updates..."_s, u"アップデートを確認..."_s);
}

QString L10n::selectCategory() {
    return pick(u"카테고리를 선택하세요"_s, u"Select a category"_s,
                u"カテゴリーを選択してください"_s);
}

QString L10n::brewNotFound() {
    return pick(u"Homebrew를 찾을 수 없음"_s, u"Homebrew Not Found"_s,
                u"Homebrewが見つかりません"_s);
}

QString L10n::brewNotFoundDesc() {
    return pick(
        u"Lumora은 Homebrew가 설치되어 있어야 합니다.\n먼저 Homebrew를 설치하세요."_s,
        u"Lumora requires Homebrew to be installed.\nPlease install Homebrew first."_s,
        u"Lumoraを使用するにはHomebrewが必要です。\n先にHomebrewをインストールしてください。"_s);
}

QString L10n::installHomebrew() {
    return pick(u"Homebrew 설치"_s, u"Install Homebrew"_s, u"Homebrewをインストール"_s);
}

QString L10n::updateComplete() {
    return pick(u"업데이트 완료"_s, u"Update Complete"_s, u"アップデート完了"_s);
}

QString L10n::updatedTo(const QString& version) {
    return pick(u"v"_s + version + u"(으)로 업데이트되었습니다."_s,
                u"Updated to v"_s + version + u"."_s,
                u"v"_s + version + u"にアップデートしました。"_s);
}

QString L10n::upToDate() {
    return pick(u"최신 버전"_s, u"Up to Date"_s, u"最新バージョン"_s);
}

QString L10n::runningLatest(const QString& version) {
    return pick(u"최신 버전(v"_s + version + u")을 사용 중입니다."_s,
                u"You are running the latest version (v"_s + version + u")."_s,
                u"最新バージョン（v"_s + version + u"）を使用中です。"_s);
}

QString L10n::updateCheckFailed() {
    return pick(u"업데이트 확인 실패"_s, u"Update Check Failed"_s, u"アップデート確認失敗"_s);
}

QString L10n::cannotConnect() {
    return pick(u"서버에 연결할 수 없습니다."_s, u"Cannot connect to server."_s,
                u"サーバーに接続できません。"_s);
}

QString L10n::updateCheckError() {
    return pick(u"업데이트 확인에 실패했습니다."_s, u"Failed to check for updates."_s,
                u"アップデートの確認に失敗しました。"_s);
}

QString L10n::newVersionAvailable(const QString& version) {
    return pick(u"새 버전 v"_s + version + u" 사용 가능"_s,
                u"New Version v"_s + version + u" Available"_s,
                u"新バージョン v"_s + version + u" が利用可能"_s);
}

QString L10n::updateInfoText(const QString& version) {
    return pick(u"현재: v"_s + version + u"\n\n업데이트 후 앱이 재시작됩니다."_s,
                u"Current: v"_s + version + u"\n\nThe app will restart after updating."_s,
                u"現在: v"_s + version + u"\n\nアップデート後アプリが再起動します。"_s);
}

QString L10n::updateNow() {
    return pick(u"지금 업데이트"_s, u"Update Now"_s, u"今すぐアップデート"_s);
}

QString L10n::later() {
    return pick(u"나중에"_s, u"Later"_s, u"後で"_s);
}

QString L10n::ok() {
    return pick(u"확인"_s, u"OK"_s, u"OK"_s);
}

QString L10n::downloadFailed() {
    return pick(u"다운로드 실패"_s, u"Download failed"_s, u"ダウンロード失敗"_s);
}

QString L10n::appBundleNotFound() {
    return pick(u"앱 번들을 찾을 수 없음"_s, u"App bundle not found"_s,
                u"アプリバンドルが見つかりません"_s);
}

QString L10n::extractFailed() {
    return pick(u"압축 해제 실패"_s, u"Extract failed"_s, u"展開失敗"_s);
}
