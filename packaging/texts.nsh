; What the installer says besides the texts that come with it. A language of res/Languages.inc that lacks one fails the
; build.

!macro TEXTS language welcome running close newer rights left layout
    LangString WELCOME ${LANG_${language}} "${welcome}${PARAGRAPH}$_CLICK"
    LangString PROGRAM_IS_RUNNING ${LANG_${language}} "${running}"
    LangString CLOSE_AND_RETRY ${LANG_${language}} "${running}${PARAGRAPH}${close}"
    LangString NEWER_IS_INSTALLED ${LANG_${language}} "${newer}"
    LangString ADMINISTRATOR_NEEDED ${LANG_${language}} "${rights}"
    LangString LEFT_IN_PLACE ${LANG_${language}} "${left}"
    LangString LAYOUT ${LANG_${language}} "${layout}"
!macroend

!define PARAGRAPH "$\r$\n$\r$\n"

!insertmacro TEXTS English \
    "Setup installs ${PRODUCT} ${VERSION}.${PARAGRAPH}Please close the host first: the program may be open in its window." \
    "${PRODUCT} is running, or its files can't be changed." \
    "Close it (a docked one in the host's window), then choose Retry." \
    "A newer version ($0) is already installed. Replace it with version ${VERSION}?" \
    "Administrator rights are needed to install or remove the program for all users." \
    "${PRODUCT} has been removed.${PARAGRAPH}Your own work is still there: menu layouts (*.pgl), presets and preset files (*.spp), names that you gave to plug-ins, and the list of excluded plug-ins." \
    "Plug-in Menu Layout"

!insertmacro TEXTS German \
    "Es wird ${PRODUCT} ${VERSION} installiert.${PARAGRAPH}Bitte beenden Sie zuerst den Host: Das Programm kann in seinem Fenster geöffnet sein." \
    "${PRODUCT} läuft noch, oder die Dateien lassen sich nicht ändern." \
    "Schließen Sie das Programm (ein angedocktes im Fenster des Hosts), und wählen Sie dann „Wiederholen“." \
    "Eine neuere Version ($0) ist bereits installiert. Durch Version ${VERSION} ersetzen?" \
    "Um das Programm für alle Benutzer zu installieren oder zu entfernen, sind Administratorrechte nötig." \
    "${PRODUCT} wurde entfernt.${PARAGRAPH}Ihre eigenen Daten sind noch vorhanden: Menü-Layouts (*.pgl), Presets und Preset-Dateien (*.spp), die Namen, die Sie Plug-ins gegeben haben, und die Liste der ausgeschlossenen Plug-ins." \
    "Plug-in-Menü-Layout"

!insertmacro TEXTS French \
    "${PRODUCT} ${VERSION} va être installé.${PARAGRAPH}Veuillez d'abord fermer l'hôte : le programme est peut-être ouvert dans sa fenêtre." \
    "${PRODUCT} est en cours d'exécution, ou ses fichiers ne peuvent pas être modifiés." \
    "Fermez-le (dans la fenêtre de l'hôte s'il y est ancré), puis choisissez Réessayer." \
    "Une version plus récente ($0) est déjà installée. La remplacer par la version ${VERSION} ?" \
    "Des droits d'administrateur sont nécessaires pour installer ou supprimer le programme pour tous les utilisateurs." \
    "${PRODUCT} a été supprimé.${PARAGRAPH}Votre travail est conservé : dispositions de menu (*.pgl), préréglages et fichiers de préréglages (*.spp), noms donnés aux plug-ins et liste des plug-ins exclus." \
    "Disposition du menu des plug-ins"

!insertmacro TEXTS Italian \
    "Verrà installato ${PRODUCT} ${VERSION}.${PARAGRAPH}Chiudere prima l'host: il programma potrebbe essere aperto nella sua finestra." \
    "${PRODUCT} è in esecuzione oppure i suoi file non possono essere modificati." \
    "Chiuderlo (se è ancorato, nella finestra dell'host), quindi scegliere Riprova." \
    "È già installata una versione più recente ($0). Sostituirla con la versione ${VERSION}?" \
    "Servono i diritti di amministratore per installare o rimuovere il programma per tutti gli utenti." \
    "${PRODUCT} è stato rimosso.${PARAGRAPH}I dati dell'utente sono stati conservati: layout dei menu (*.pgl), preset e file di preset (*.spp), i nomi dati ai plug-in e l'elenco dei plug-in esclusi." \
    "Layout menu plug-in"

!insertmacro TEXTS Japanese \
    "${PRODUCT} ${VERSION} をインストールします。${PARAGRAPH}先にホストを終了してください。プログラムがホストのウィンドウ内で開いている場合があります。" \
    "${PRODUCT} が実行中か、ファイルを変更できません。" \
    "プログラムを閉じてから (ドッキング中はホストのウィンドウ内で)、[再試行] をクリックしてください。" \
    "新しいバージョン ($0) がすでにインストールされています。バージョン ${VERSION} に置き換えますか?" \
    "すべてのユーザーを対象にプログラムをインストールまたは削除するには、管理者の権限が必要です。" \
    "${PRODUCT} を削除しました。${PARAGRAPH}作成したデータは残っています: メニュー レイアウト (*.pgl)、プリセットとプリセット ファイル (*.spp)、プラグインに付けた名前、除外したプラグインの一覧。" \
    "プラグイン メニュー レイアウト"

!insertmacro TEXTS PortugueseBR \
    "O ${PRODUCT} ${VERSION} será instalado.${PARAGRAPH}Feche primeiro o host: o programa pode estar aberto na janela dele." \
    "O ${PRODUCT} está em execução ou seus arquivos não podem ser alterados." \
    "Feche-o (se estiver encaixado, na janela do host) e escolha Repetir." \
    "Uma versão mais recente ($0) já está instalada. Substituí-la pela versão ${VERSION}?" \
    "São necessários direitos de administrador para instalar ou remover o programa para todos os usuários." \
    "O ${PRODUCT} foi removido.${PARAGRAPH}O seu trabalho continua no lugar: layouts de menu (*.pgl), presets e arquivos de presets (*.spp), nomes dados a plug-ins e a lista de plug-ins desabilitados." \
    "Layout do menu de plug-ins"

!insertmacro TEXTS Russian \
    "Будет установлена программа ${PRODUCT} ${VERSION}.${PARAGRAPH}Сначала закройте хост: программа может быть открыта в его окне." \
    "Программа ${PRODUCT} запущена, или ее файлы нельзя изменить." \
    "Закройте ее (закрепленную — в окне хоста) и нажмите кнопку «Повторить»." \
    "Уже установлена более новая версия ($0). Заменить ее версией ${VERSION}?" \
    "Чтобы установить или удалить программу для всех пользователей, нужны права администратора." \
    "Программа ${PRODUCT} удалена.${PARAGRAPH}Ваши данные остались на месте: макеты меню (*.pgl), пресеты и файлы пресетов (*.spp), заданные вами имена плагинов и список исключенных плагинов." \
    "Макет меню плагинов"

!insertmacro TEXTS SimpChinese \
    "即将安装 ${PRODUCT} ${VERSION}。${PARAGRAPH}请先关闭宿主软件：该程序可能正在其窗口中打开。" \
    "${PRODUCT} 正在运行，或者其文件无法更改。" \
    "请关闭该程序（如已停靠，请在宿主软件的窗口中关闭），然后单击“重试”。" \
    "已安装较新的版本 ($0)。要用版本 ${VERSION} 替换它吗？" \
    "为所有用户安装或删除该程序需要管理员权限。" \
    "${PRODUCT} 已删除。${PARAGRAPH}您自己的数据仍然保留：菜单布局 (*.pgl)、预设和预设文件 (*.spp)、您为插件起的名称以及排除的插件列表。" \
    "插件菜单布局"

!insertmacro TEXTS SpanishInternational \
    "Se va a instalar ${PRODUCT} ${VERSION}.${PARAGRAPH}Cierre primero el host: el programa puede estar abierto en su ventana." \
    "${PRODUCT} se está ejecutando o sus archivos no se pueden modificar." \
    "Ciérrelo (si está acoplado, en la ventana del host) y elija Reintentar." \
    "Ya está instalada una versión más reciente ($0). ¿Reemplazarla por la versión ${VERSION}?" \
    "Se necesitan derechos de administrador para instalar o quitar el programa para todos los usuarios." \
    "${PRODUCT} se ha eliminado.${PARAGRAPH}Su trabajo sigue en su lugar: diseños de menú (*.pgl), preajustes y archivos de preajustes (*.spp), los nombres que dio a los plug-ins y la lista de plug-ins excluidos." \
    "Diseño del menú de plug-ins"
