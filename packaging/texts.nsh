; What the installer says itself, in its five languages; the rest comes with its maker.
!macro text name english french german spanish dutch
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_FRENCH} "${french}"
  LangString ${name} ${LANG_GERMAN} "${german}"
  LangString ${name} ${LANG_SPANISH} "${spanish}"
  LangString ${name} ${LANG_DUTCH} "${dutch}"
!macroend

!insertmacro text textRunning \
  "Quorvel is running. Please close it first." \
  "Quorvel est en cours d’exécution. Veuillez d’abord le fermer." \
  "Quorvel läuft noch. Bitte schließen Sie es zuerst." \
  "Quorvel se está ejecutando. Ciérrelo primero." \
  "Quorvel is nog geopend. Sluit het eerst."
!insertmacro text textLater \
  "Version $0 of Quorvel is installed, which is later than this one (${VERSION}). Replace it all the same?" \
  "La version $0 de Quorvel est installée ; elle est plus récente que celle-ci (${VERSION}). La remplacer quand même ?" \
  "Installiert ist Quorvel $0, eine neuere Version als diese (${VERSION}). Trotzdem ersetzen?" \
  "Está instalada la versión $0 de Quorvel, más reciente que esta (${VERSION}). ¿Reemplazarla de todos modos?" \
  "Versie $0 van Quorvel is geïnstalleerd en is nieuwer dan deze (${VERSION}). Toch vervangen?"
!insertmacro text textNotInstalled \
  "Quorvel could not be installed: not every file can be written in$\n$INSTDIR$\n$\nNothing was changed there." \
  "Quorvel n’a pas pu être installé : certains fichiers ne peuvent pas être écrits dans$\n$INSTDIR$\n$\nRien n’y a été modifié." \
  "Quorvel konnte nicht installiert werden: Nicht jede Datei lässt sich schreiben in$\n$INSTDIR$\n$\nDort wurde nichts geändert." \
  "No se pudo instalar Quorvel: no se pueden escribir todos los archivos en$\n$INSTDIR$\n$\nNo se ha cambiado nada allí." \
  "Quorvel kon niet worden geïnstalleerd: niet elk bestand kan worden geschreven in$\n$INSTDIR$\n$\nDaar is niets gewijzigd."
!insertmacro text textNotUndone \
  "Quorvel could not be installed, and the former version could not be put back, because another program uses its files in$\n$INSTDIR$\n$\nClose other programs and start this installer again." \
  "Quorvel n’a pas pu être installé et la version précédente n’a pas pu être rétablie, car un autre programme utilise ses fichiers dans$\n$INSTDIR$\n$\nFermez les autres programmes et relancez cet installateur." \
  "Quorvel konnte nicht installiert und die vorige Version nicht wiederhergestellt werden, weil ein anderes Programm ihre Dateien verwendet in$\n$INSTDIR$\n$\nSchließen Sie andere Programme und starten Sie dieses Installationsprogramm noch einmal." \
  "No se pudo instalar Quorvel ni restablecer la versión anterior, porque otro programa usa sus archivos en$\n$INSTDIR$\n$\nCierre los demás programas y vuelva a iniciar este instalador." \
  "Quorvel kon niet worden geïnstalleerd en de vorige versie kon niet worden teruggezet, omdat een ander programma de bestanden gebruikt in$\n$INSTDIR$\n$\nSluit andere programma’s en start dit installatieprogramma opnieuw."
!insertmacro text textNotRegistered \
  "Quorvel is installed, but its entries in the start menu or in the list of installed programs could not be made." \
  "Quorvel est installé, mais ses entrées dans le menu Démarrer ou dans la liste des programmes n’ont pas pu être créées." \
  "Quorvel ist installiert, aber seine Einträge im Startmenü oder in der Liste der Programme konnten nicht angelegt werden." \
  "Quorvel está instalado, pero no se pudieron crear sus entradas en el menú Inicio o en la lista de programas." \
  "Quorvel is geïnstalleerd, maar de vermeldingen in het startmenu of in de lijst met programma’s konden niet worden gemaakt."
!insertmacro text textNotRemoved \
  "Some files of Quorvel could not be removed because another program uses them. Close other programs and uninstall Quorvel again." \
  "Certains fichiers de Quorvel n’ont pas pu être supprimés, car un autre programme les utilise. Fermez les autres programmes et recommencez la désinstallation." \
  "Einige Dateien von Quorvel konnten nicht entfernt werden, weil ein anderes Programm sie verwendet. Schließen Sie andere Programme und deinstallieren Sie Quorvel erneut." \
  "No se pudieron eliminar algunos archivos de Quorvel porque otro programa los usa. Cierre los demás programas y vuelva a desinstalar Quorvel." \
  "Sommige bestanden van Quorvel konden niet worden verwijderd omdat een ander programma ze gebruikt. Sluit andere programma’s en verwijder Quorvel opnieuw."
!insertmacro text textScenesStay \
  "Your scenes, drafts, earlier versions and settings stay where they are, in Scenes and beside it:$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Vos scènes, brouillons, versions antérieures et réglages restent où ils sont, dans Scenes et à côté :$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Ihre Szenen, Entwürfe, früheren Versionen und Einstellungen bleiben, wo sie sind, in Scenes und daneben:$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Sus escenas, borradores, versiones anteriores y ajustes se quedan donde están, en Scenes y junto a esa carpeta:$\n$INSTDIR\Programs\Quorvel\Scenes" \
  "Uw scènes, concepten, eerdere versies en instellingen blijven waar ze zijn, in Scenes en ernaast:$\n$INSTDIR\Programs\Quorvel\Scenes"
!insertmacro text textManual \
  "Open the manual" "Ouvrir le manuel" "Handbuch öffnen" "Abrir el manual" "Handleiding openen"
!insertmacro text textForWhom \
  "For whom is Quorvel?" "Pour qui installer Quorvel ?" "Für wen ist Quorvel?" "¿Para quién es Quorvel?" "Voor wie is Quorvel?"
!insertmacro text textForWhomHint \
  "In both cases, everybody has their own scenes and settings." \
  "Dans les deux cas, chacun a ses propres scènes et réglages." \
  "In beiden Fällen haben alle ihre eigenen Szenen und Einstellungen." \
  "En ambos casos, cada persona tiene sus propias escenas y ajustes." \
  "In beide gevallen heeft iedereen eigen scènes en instellingen."
!insertmacro text textForMe \
  "For me only" "Pour moi uniquement" "Nur für mich" "Solo para mí" "Alleen voor mij"
!insertmacro text textForMeHint \
  "Needs no administrator. Your scenes are in the folder of the program." \
  "Sans administrateur. Vos scènes sont dans le dossier du programme." \
  "Braucht keine Administratorrechte. Ihre Szenen sind im Ordner des Programms." \
  "No requiere administrador. Sus escenas están en la carpeta del programa." \
  "Zonder beheerder. Uw scènes staan in de map van het programma."
!insertmacro text textForAll \
  "For all users of this computer" \
  "Pour tous les utilisateurs de cet ordinateur" \
  "Für alle Benutzer dieses Computers" \
  "Para todos los usuarios de este equipo" \
  "Voor alle gebruikers van deze computer"
!insertmacro text textForAllHint \
  "Needs an administrator. Each user's scenes are in the folder Quorvel of their documents; another folder can be chosen in the settings." \
  "Exige un administrateur. Les scènes de chaque utilisateur sont dans le dossier Quorvel de ses documents ; les réglages permettent d’en choisir un autre." \
  "Braucht Administratorrechte. Die Szenen jedes Benutzers sind im Ordner Quorvel seiner Dokumente; in den Einstellungen lässt sich ein anderer wählen." \
  "Requiere un administrador. Las escenas de cada usuario están en la carpeta Quorvel de sus documentos; en los ajustes se puede elegir otra." \
  "Vereist een beheerder. De scènes van elke gebruiker staan in de map Quorvel bij de documenten; in de instellingen kan een andere map worden gekozen."
!insertmacro text textNoAdministrator \
  "An installation for all users can only be changed by an administrator." \
  "Seul un administrateur peut modifier une installation pour tous les utilisateurs." \
  "Eine Installation für alle Benutzer kann nur mit Administratorrechten geändert werden." \
  "Solo un administrador puede cambiar una instalación para todos los usuarios." \
  "Alleen een beheerder kan een installatie voor alle gebruikers wijzigen."
!insertmacro text textOtherKind \
  "Quorvel cannot be installed here. The folder has it already, for one user instead of all or the other way round:$\n$INSTDIR" \
  "Quorvel ne peut pas être installé ici. Il est déjà dans ce dossier, pour un seul utilisateur au lieu de tous, ou l’inverse :$\n$INSTDIR" \
  "Quorvel kann hier nicht installiert werden. In diesem Ordner ist es schon, für einen Benutzer statt für alle oder umgekehrt:$\n$INSTDIR" \
  "Quorvel no se puede instalar aquí. Ya está en esta carpeta, para un usuario en lugar de para todos, o al revés:$\n$INSTDIR" \
  "Quorvel kan hier niet worden geïnstalleerd. Het staat al in deze map, voor één gebruiker in plaats van voor alle, of andersom:$\n$INSTDIR"
!insertmacro text textUsersScenesStay \
  "The scenes, drafts, earlier versions and settings of all users stay where they are: in the folder Quorvel of each user's documents, or in another that was chosen." \
  "Les scènes, brouillons, versions antérieures et réglages de tous les utilisateurs restent où ils sont : dans le dossier Quorvel des documents de chacun, ou dans celui qui a été choisi." \
  "Szenen, Entwürfe, frühere Versionen und Einstellungen aller Benutzer bleiben, wo sie sind: im Ordner Quorvel der Dokumente jedes Benutzers oder in einem anderen, der gewählt wurde." \
  "Las escenas, los borradores, las versiones anteriores y los ajustes de todos los usuarios se quedan donde están: en la carpeta Quorvel de los documentos de cada uno, o en la que se haya elegido." \
  "De scènes, concepten, eerdere versies en instellingen van alle gebruikers blijven waar ze zijn: in de map Quorvel bij de documenten van elke gebruiker, of in een andere die gekozen is."
