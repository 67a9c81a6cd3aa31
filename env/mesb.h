/* ORVELA graphic vocabulary: messages, numbered by position */
|0: HELP PALETTE\n
left button: choose a colour\n
middle button: validate\n
right button: menu\n
hue, saturation, value: drag the cursor\n
|1: right click\n
|2: drag the image\n
|3: draw a line\n
|4: ARE YOU SURE ?\n
|5: help (H)\n
|6: interpreter (?)\n
undo (U)\n
red green blue (R G B)\n
hue saturation value (T S V)\n
end (Escape)\n
|7: ???\n
|8: ???\n
|9: ???\n
|10: ???\n
|11: ???\n
|12: ???\n
|13: ???\n
|15: not implemented texture\7\n
|16: is not a grid\7\n
|17: incoherent\7\n
|18: do end \7\n
|19: Restart\7\n
|20: do validate palette\7\n
|21: Stack vol\7\n
|22: The intrepreter waiting in the window orvela (Alt Tab)\n
|23: keyboard\n
|24: ???\n
|25: ???\n
|26: ???\n
|27: already exists\7\n
|28: ???\n
|29: incorectly formatted file\7\n
|30: over(d) poi(num) vol(id)\7\n
|31: window number illegal\7\n
|32: ???\n
|33: ???\n
|34: Too many menus stacked\7\n
|35: Menus loop\n
|36: Too many submenus\7\n
|37: opening zero\7\n
|38: number of images=
|39: hole fac(num) vol num\n
|40: name\n
|41: ???
|42: generate facet(num1,num2) vol(id)\7\n
|43: contains no hole\7\n
|44: light incorrectly formatted\7\n
|45: Right button: menu\n
Left button: designate\n
Middle button: end\n
|46: Right button: menu\nEscape: Fin\7\n
|47: image
|48: Volumes have not been saved, leave (0,1) ?\7
|49: Trajectorieses have not been saved, leave (0,1) ?\7
|50: Kinematics have not been saved, leave (0,1) ?\7
|51: ???
|52: ???
|53: ???
|54: hue
|55: saturation
|56: value
|57: red
|58: green
|59: blue
|60: ill
|61: ref
|62: spe
|63: bri
|64: tran
|65: Middel button: end\n
Left button: move\n
Right button: menu\n
|66: incorrectly formatted view\7\n
|67: does not have the same number of vertices\7\n
|68: not enough vertices\7\n
|69: not enough points\7\n
|70: prism(x,y,z,...) numero n\7\n
|71: Graphic off\7\n
|72: Occuped device\7\n
|73: too many voisins\7\n
|74: erreur coulisse\7\n
|75: ???\n
|76: triangulate vol(num)\7\n
|77: add number inc\7\n
|78: move error\7\n
|79: play(im1,im2,ni)\7\n
|80: RC: suite\n
Space: pause\n
+: faster\n
-: slower\n
0: first image\n
Escape: end\n
|81: has no axis\7\n
|82: has no speed\7\n
|83: ???
|84: not connected\n
|85: generate vol(id) number(num2)\7\n
|86: ini camera(ad1,ad2,nb)\7\n
|87: play camera(ad1,ad2,cas)\7\n
|87: envelope error\7\n
|89: split vertex(n1,n2,...) vol(id)\7\n
|90: graphic on\n
|91: Bitmap on\n
|92: image memory on\n
|93: image post processed\n
|94: ???\n
???\n
|95: inheritence enveloppe vol n1=n2\7\n
|96: graphic off\n
|97: bitmap off\n
|98: image memory off\n
|99: ???
|100: ???
|101: anchorage error\7\n
|102: does not have masse\7\n
|103: exec anc(t) rot[xyz](a1,a2) vol(id1,id2)\7\n
|104: does not have dynamic\7\n
|105: ???
|106: PRESS THE MIDDLE BUTTON TO CONTINUE
|107: INTERACTIVE MODE
|108: ???
|109: ???
|110: SEE
|111: DEPXY: DESIGNATE AN OBJECT
|112: DEPZ: DESIGNATE AN OBJECT
|113: ROTX: DESIGNATE AN OBJECT
|114: ROTY: DESIGNATE AN OBJECT
|115: ROTZ: DESIGNATE AN OBJECT
|116: PULL: DESIGNATE A VERTEX
|117: OUTIL: DESIGNATE AN OBJECT
|118: RADIUS
|119: COEFFICIENT
|120: RIGHT BUTTON: MENUS
|121: LEFT CLICK
|122: ANGLE
|123: DESIGNATE AN OBJECT
|124: HOM: DESIGNATE AN OBJECT
|125: DILX: DESIGNATE AN OBJECT
|126: DILY: DESIGNATE AN OBJECT
|127: DILZ: DESIGNATE AN OBJECT
|128: BOX: DESIGNATE VOLUMES, A BOX THEN PUIS MIDDLE BUTTON
|129: ENTRY
|130: ???
|131: SQUELETTON: DESIGNATE A VARIABLE THEN A VOLUME
|132: CHANGE THE VARIABLE THEN MIDDLE  BOTTON
|133: ???
|134: DESIGNATE A VARIABLE
|135: MUST BE IN THIS ORDER FOR PRUVEISTI LOGIN\7\n
|136: DESIGNATE A VOLUME
|137: ZOOM
|138: DESIGNATE A VERTEX
