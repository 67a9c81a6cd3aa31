// The two option help texts, printed for a lone `help` argument.
#include "kernel/report.h"
#include "kernel/startup.h"

namespace {

const char* const HELP_A[] = {
    "   buf=100000            reading buffer\n",
    "   com=100000            compilation\n",
    "   deb                   Debug\n",
    "   egl                   draws off-screen, with no X server (EGL)\n",
    "   emp=10000             commands stack\n",
    "   env=env/              environnement folder\n",
    "   esc=27                escape\n",
    "   eva=100000            evaluations\n",
    "   exe=exe/              exécutables folder\n",
    "   fun=fun/              folder of function files\n",
    "   htm=htm               htlm code file name\n",
    "   ID                    does not write threadID\n",
    "   ini=init[abc].h       initialization file\n",
    "   lan=lance()           launching function\n",
    "   mac=PC MAC SGI        Nom de la machine\n",
    "   mal=dim               maximum size of mallocs (default 100000)\n",
    "   pri=dim               maximum size of prints (default 1000)\n",
    "   sys                   prints sysinfo\n",
    "   tim                   time base\n",
    "   uti=uti/              user folder\n",
};

const char* const HELP_B[] = {
    "ale=10000      dimension du tableau des aléatoires précalculés\n",
    "cx=1 cy=-1     Coeffiocient en x et y\n",
    "dy=40          le bas de la fenêtre est relevée de 40\n",
    "egl            dessin hors écran, sans serveur X (EGL)\n",
    "ful            Full window\n",
    "fun=fun/       dossier des fichiers de fonctions\n",
    "gra=1          Processuer graphique (0: off, 1: on)\n",
    "hei=dimx,dimy  dimensions de l'image haute définition\n",
    "orx=0 ory=0    origine du coin haut gauche dr la fenêtre\n",
    "rvb=8          Composantes RVB\n",
    "son=sons/      dossier des sons\n",
    "vid            écran de la taille video\n",
    "see           lancement en mode voir\n",
    "win=ful        plein écran\n",
    "win=vid        vidéo\n",
    "win=1024,768   dimensions de l'écran\n",
    "win=0.5,0.5    dimensions de l'écran moitiés des dimensions maximales\n",
    "x=1024 y=768   dimensions de l'écran\n",
    "x=0.5 y=0.5    dimensions de l'écran moitiés des dimensions maximales\n",
    "y=0.5          Hauteur moitiee\n",
    "zbu=1          Zbuffer (1: short, 2: float)\n",
    "Ces options peuvent etre mises dans le fichier envb.h\n\n",
};

const char* const STARS_60 = "************************************************************\n";
const char* const STARS_46 = "**********************************************\n";

}  // namespace

void print_help_a() {
  voir_texte(STARS_60);
  voir_texte("   cle=Valeur par defaut Signification\n\n");
  for (const char* line : HELP_A) voir_texte(line);
  voir_texte(STARS_60);
}

void print_help_b() {
  voir_texte("******************* ORVELA *******************\n\n");
  voir_texte("   cle=Valeur par defaut Signification\n");
  voir_texte("   -------------------------------------------\n");
  for (const char* line : HELP_B) voir_texte(line);
  voir_texte(STARS_46);
}
