; The installer's texts beyond those that NSIS brings along.
!macro Text name english japanese
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_JAPANESE} "${japanese}"
!macroend
!define Text "!insertmacro Text"

${Text} ChoiceTitle "Which After Effects is it for?" "どの After Effects で使いますか？"
${Text} ChoiceSubtitle "The choice fits what was found on this computer." "このコンピューターで見つかったものに合わせて選択されています。"
${Text} ForMulti "After Effects &2022 and later, and Premiere Pro" "After Effects 2022 以降と Premiere Pro(&2)"
${Text} ForMultiMore "Renders several frames at once." "複数のフレームを同時にレンダリングします。"
${Text} ForEvery "&Every After Effects, and Premiere Pro" "すべての After Effects と Premiere Pro(&E)"
${Text} ForEveryMore "After Effects 2022 and later render one frame at a time with it." "After Effects 2022 以降ではフレームを 1 つずつレンダリングします。"
${Text} ForEach "E&ach version found: its own build in its own plug-ins folder" "見つかったバージョンごとに専用のものを専用のフォルダーへ(&A)"
${Text} ForEachMore "For computers with versions from before and after 2022. Not for Premiere Pro." "2022 より前と以降の両方がある場合用です。Premiere Pro では使えません。"
${Text} ForAllUsers "Every &user may change the stored defaults" "すべてのユーザーがデフォルト値を変更できるようにする(&U)"
${Text} ForAllUsersMore "Otherwise only administrators can, since the plug-ins folder is write-protected. For all users together." "プラグインフォルダーは書き込み禁止のため、選択しない場合は管理者だけが変更できます。値は全ユーザー共通です。"
${Text} InUse "nevrel.aex is in use. Quit After Effects, Premiere Pro and Media Encoder, then try again.$\r$\n$\r$\n$Folder" "nevrel.aex は使用中です。After Effects、Premiere Pro、Media Encoder を終了してから再試行してください。$\r$\n$\r$\n$Folder"
${Text} CannotWrite "nevrel.aex cannot be written into this folder:$\r$\n$\r$\n$Folder" "このフォルダーに nevrel.aex を書き込めません。$\r$\n$\r$\n$Folder"
${Text} NoHost "/BUILD=each: no After Effects was found." "/BUILD=each：After Effects が見つかりません。"
${Text} NotOneFolder "/BUILD=each is for each version's own plug-ins folder and cannot be combined with /D=." "/BUILD=each はバージョンごとの専用フォルダー用のため、/D= と同時には指定できません。"
