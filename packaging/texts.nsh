; What the installer says itself; tools/texts makes the other languages of it from the catalogue.
LangString textRunning ${LANG_ENGLISH} "Quorvel is running. Please close it first."
LangString textLater ${LANG_ENGLISH} \
  "Version $0 of Quorvel is installed, which is later than this one (${VERSION}). Replace it all the same?"
LangString textNotInstalled ${LANG_ENGLISH} \
  "Quorvel could not be installed: not every file can be written in$\n$INSTDIR$\n$\nNothing was changed there."
LangString textNotUndone ${LANG_ENGLISH} \
  "Quorvel could not be installed, and the former version could not be put back, because another program uses its files in$\n$INSTDIR$\n$\nClose other programs and start this installer again."
LangString textNotRegistered ${LANG_ENGLISH} \
  "Quorvel is installed, but its entries in the start menu or in the list of installed programs could not be made."
LangString textNotRemoved ${LANG_ENGLISH} \
  "Some files of Quorvel could not be removed because another program uses them. Close other programs and uninstall Quorvel again."
LangString textScenesStay ${LANG_ENGLISH} \
  "Your scenes, drafts, earlier versions and settings stay where they are, in Scenes and beside it:$\n$INSTDIR\Programs\Quorvel\Scenes"
LangString textManual ${LANG_ENGLISH} "Open the manual"
LangString textMenuScenes ${LANG_ENGLISH} "Quorvel scenes"
LangString textMenuManual ${LANG_ENGLISH} "Quorvel manual"
LangString textMenuRemoval ${LANG_ENGLISH} "Uninstall Quorvel"
LangString textForWhom ${LANG_ENGLISH} "For whom is Quorvel?"
LangString textForWhomHint ${LANG_ENGLISH} "In both cases, everybody has their own scenes and settings."
LangString textForMe ${LANG_ENGLISH} "For me only"
LangString textForMeHint ${LANG_ENGLISH} \
  "Needs no administrator. Your scenes are in the folder of the program."
LangString textForAll ${LANG_ENGLISH} "For all users of this computer"
LangString textForAllHint ${LANG_ENGLISH} \
  "Needs an administrator. Each user's scenes are in the folder Quorvel of their documents; another folder can be chosen in the settings."
LangString textNoAdministrator ${LANG_ENGLISH} \
  "An installation for all users can only be changed by an administrator."
LangString textOtherKind ${LANG_ENGLISH} \
  "Quorvel cannot be installed here. The folder has it already, for one user instead of all or the other way round:$\n$INSTDIR"
LangString textUsersScenesStay ${LANG_ENGLISH} \
  "The scenes, drafts, earlier versions and settings of all users stay where they are: in the folder Quorvel of each user's documents, or in another that was chosen."
