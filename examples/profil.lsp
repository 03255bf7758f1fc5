; PROFIL : profil en long d'une polyligne qui passe par des points levés.
; Désigner la polyligne ; chaque sommet prend le numéro et l'altitude du point levé qui s'y trouve.
; Le tableau (numéro, distance cumulée, altitude, pente en %) va dans profil.csv, les pentes dans le dessin.

(defun attribut (bloc etiquette / e liste texte)
  (setq e (entnext bloc))
  (while (and e (= (cdr (assoc 0 (setq liste (entget e)))) "ATTRIB"))
    (if (= (strcase (cdr (assoc 2 liste))) etiquette)
      (setq texte (cdr (assoc 1 liste))))
    (setq e (entnext e)))
  texte)

(defun sommets (liste)
  (mapcar 'cdr (vl-remove-if-not '(lambda (groupe) (= (car groupe) 10)) liste)))

; Le point levé au sommet : (numéro altitude), nil s'il n'y en a pas.
(defun leve (p / jeu bloc)
  (setq jeu (ssget "_X" (list '(0 . "INSERT") '(-4 . ">,>,*") (cons 10 (mapcar '- p '(0.01 0.01)))
                              '(-4 . "<,<,*") (cons 10 (mapcar '+ p '(0.01 0.01))) '(-3 ("VARNPLUS")))))
  (if jeu
    (progn
      (setq bloc (ssname jeu 0))
      (list (attribut bloc "NUMPT") (distof (attribut bloc "Z"))))))

(defun ecrire-pente (p q pente)
  (entmake (list '(0 . "TEXT") '(8 . "PROFIL") '(40 . 0.8)
                 (cons 10 (append (mapcar '(lambda (a b) (/ (+ a b) 2.0)) p q) '(0.0)))
                 (cons 50 (angle p q))
                 (cons 1 (strcat (rtos pente 2 2) " %")))))

(defun c:profil (/ *error* choix fichier cumul p q ici avant pente)
  (defun *error* (message)
    (if fichier (close fichier))
    (if (/= message "Fonction annulée") (princ (strcat "\nPROFIL : " message)))
    (princ))
  (while (not (and (setq choix (entsel "\nPolyligne du profil : "))
                   (= (cdr (assoc 0 (entget (car choix)))) "LWPOLYLINE")))
    (princ "\nCe n'est pas une polyligne."))
  (setq fichier (open "profil.csv" "w") cumul 0.0)
  (write-line "point;distance;altitude;pente" fichier)
  (foreach q (sommets (entget (car choix)))
    (if p (setq cumul (+ cumul (distance p q))))
    (setq ici (leve q))
    (cond ((null ici)
           (princ (strcat "\nPas de point levé à " (rtos cumul 2 2) " m.")))
          (avant
           (setq pente (/ (* 100.0 (- (cadr ici) (cadr avant))) (distance p q)))
           (ecrire-pente p q pente)))
    (write-line (strcat (if ici (car ici) "?") ";" (rtos cumul 2 3) ";"
                        (if (and ici (cadr ici)) (rtos (cadr ici) 2 3) "") ";"
                        (if (and ici avant) (rtos pente 2 2) ""))
                fichier)
    (setq p q avant ici))
  (close fichier)
  (setq fichier nil)
  (princ (strcat "\n" (rtos cumul 2 3) " m écrits dans profil.csv"))
  (princ))

(princ "\nTapez PROFIL.")
(princ)
