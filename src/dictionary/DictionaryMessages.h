#pragma once
// The titles and texts that the dictionary steps show in more than one place.

#include <QString>

namespace normaris::dictionary {

inline const QString kInputErrorTitle = QStringLiteral("入力エラー");
inline const QString kEditLimitTitle = QStringLiteral("編集制限");
inline const QString kDeleteLimitTitle = QStringLiteral("削除制限");
inline const QString kUserDataOnly = QStringLiteral("ユーザー追加データ以外は削除できません。");
inline const QString kSegmentCountInUse = QStringLiteral("使用中のデータがあるため、分割の数を変更できません。");
inline const QString kUpdateDoneTitle = QStringLiteral("更新完了");
inline const QString kUpdateDoneText = QStringLiteral("データ更新が完了しました。\nフォームを閉じますか？");
inline const QString kPreambleMarkText = QStringLiteral("★前文あり★");
inline const QString kSegmentTextLabel = QStringLiteral("･･･文章");
// The longest text of one segment, in CP932 bytes.
constexpr qint16 kSegmentTextLimit = 250;

} // namespace normaris::dictionary
