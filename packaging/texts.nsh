; What the installer says besides the texts that come with it.

!macro TEXTS language running newer rights left
    LangString PROGRAM_IS_RUNNING ${LANG_${language}} "${running}"
    LangString NEWER_IS_INSTALLED ${LANG_${language}} "${newer}"
    LangString ADMINISTRATOR_NEEDED ${LANG_${language}} "${rights}"
    LangString LEFT_IN_PLACE ${LANG_${language}} "${left}"
!macroend

!define PARAGRAPH "$\r$\n$\r$\n"

!insertmacro TEXTS English \
    "${PRODUCT} is running, or its files can't be changed. Please close the program." \
    "A newer version ($0) is already installed. Replace it by version ${VERSION}?" \
    "This needs the rights of an administrator: the program is meant for all users of this computer." \
    "${PRODUCT} has been removed.${PARAGRAPH}Your own work is still there: menu layouts (*.pgl), presets and preset files (*.spp), names that you gave to plug-ins, and the list of excluded plug-ins."

!insertmacro TEXTS German \
    "${PRODUCT} läuft noch, oder die Dateien lassen sich nicht ändern. Bitte schließen Sie das Programm." \
    "Eine neuere Version ($0) ist bereits installiert. Durch Version ${VERSION} ersetzen?" \
    "Dazu sind Administratorrechte nötig: Das Programm ist für alle Benutzer dieses Computers bestimmt." \
    "${PRODUCT} wurde entfernt.${PARAGRAPH}Ihre eigene Arbeit ist noch da: Menü-Layouts (*.pgl), Presets und Preset-Dateien (*.spp), die Namen, die Sie Plug-ins gegeben haben, und die Liste der ausgeschlossenen Plug-ins."

!insertmacro TEXTS French \
    "${PRODUCT} est en cours d'exécution, ou ses fichiers ne peuvent pas être modifiés. Veuillez fermer le programme." \
    "Une version plus récente ($0) est déjà installée. La remplacer par la version ${VERSION} ?" \
    "Des droits d'administrateur sont nécessaires : le programme est destiné à tous les utilisateurs de cet ordinateur." \
    "${PRODUCT} a été supprimé.${PARAGRAPH}Votre travail est conservé : dispositions de menu (*.pgl), presets et fichiers de presets (*.spp), noms donnés aux plug-ins et liste des plug-ins exclus."

!insertmacro TEXTS Italian \
    "${PRODUCT} è in esecuzione oppure i suoi file non possono essere modificati. Chiudere il programma." \
    "È già installata una versione più recente ($0). Sostituirla con la versione ${VERSION}?" \
    "Servono i diritti di amministratore: il programma è destinato a tutti gli utenti di questo computer." \
    "${PRODUCT} è stato rimosso.${PARAGRAPH}Il tuo lavoro è rimasto: layout dei menu (*.pgl), preset e file di preset (*.spp), i nomi dati ai plug-in e l'elenco dei plug-in esclusi."

!insertmacro TEXTS Japanese \
    "${PRODUCT} が実行中か、ファイルを変更できません。プログラムを終了してください。" \
    "新しいバージョン ($0) がすでにインストールされています。バージョン ${VERSION} に置き換えますか?" \
    "このコンピューターのすべてのユーザーが対象のため、管理者の権限が必要です。" \
    "${PRODUCT} を削除しました。${PARAGRAPH}お客様のデータは残っています: メニュー レイアウト (*.pgl)、プリセットとプリセット ファイル (*.spp)、プラグインに付けた名前、除外したプラグインの一覧。"

!insertmacro TEXTS PortugueseBR \
    "O ${PRODUCT} está em execução ou seus arquivos não podem ser alterados. Feche o programa." \
    "Uma versão mais recente ($0) já está instalada. Substituí-la pela versão ${VERSION}?" \
    "São necessários direitos de administrador: o programa destina-se a todos os usuários deste computador." \
    "O ${PRODUCT} foi removido.${PARAGRAPH}O seu trabalho continua no lugar: layouts de menu (*.pgl), presets e arquivos de presets (*.spp), nomes dados a plug-ins e a lista de plug-ins excluídos."

!insertmacro TEXTS Russian \
    "Программа ${PRODUCT} запущена, или её файлы нельзя изменить. Закройте программу." \
    "Уже установлена более новая версия ($0). Заменить её версией ${VERSION}?" \
    "Нужны права администратора: программа предназначена для всех пользователей этого компьютера." \
    "Программа ${PRODUCT} удалена.${PARAGRAPH}Ваши данные остались на месте: макеты меню (*.pgl), пресеты и файлы пресетов (*.spp), имена, данные плагинам, и список исключённых плагинов."

!insertmacro TEXTS SimpChinese \
    "${PRODUCT} 正在运行,或者其文件无法更改。请关闭该程序。" \
    "已安装较新的版本 ($0)。要用版本 ${VERSION} 替换它吗?" \
    "此操作需要管理员权限:该程序供这台计算机的所有用户使用。" \
    "${PRODUCT} 已删除。${PARAGRAPH}您自己的数据仍然保留:菜单布局 (*.pgl)、预设和预设文件 (*.spp)、您为插件起的名称以及排除的插件列表。"

!insertmacro TEXTS SpanishInternational \
    "${PRODUCT} se está ejecutando o sus archivos no se pueden modificar. Cierre el programa." \
    "Ya está instalada una versión más reciente ($0). ¿Reemplazarla por la versión ${VERSION}?" \
    "Se necesitan derechos de administrador: el programa es para todos los usuarios de este equipo." \
    "${PRODUCT} se ha eliminado.${PARAGRAPH}Su trabajo sigue en su lugar: diseños de menú (*.pgl), presets y archivos de presets (*.spp), los nombres que dio a los plug-ins y la lista de plug-ins excluidos."
