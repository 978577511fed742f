;;; quor-gjf-mode.el --- Gaussian job files, with eglot -*- lexical-binding: t; -*-

;; Package-Requires: ((emacs "28.1"))

;;; Commentary:
;; A mode for .gjf, .com and .gau.  Each line is told its part of the job, by the lines before it (`quor-gjf--mark-lines'); colours follow
;; from the part.  Eglot, when it is there, starts `quor-gjf lsp'.

;;; Code:
(require 'quor-gjf-words)
(defvar eglot-server-programs)

(defgroup quor-gjf nil "Gaussian job files." :group 'languages)

(defcustom quor-gjf-program "quor-gjf" "The program that serves the language." :type 'string)

(defmacro quor-gjf--faces (&rest rows)
  "Define a face for each of ROWS: its name and the face that it looks like."
  `(progn
     ,@(mapcar (lambda (row)
                 `(defface ,(intern (format "quor-gjf-%s" (car row))) '((t :inherit ,(cadr row))) ,(format "Colours: %s." (car row))))
               rows)))

(quor-gjf--faces (separator font-lock-preprocessor-face) (comment font-lock-comment-face) (link0-key font-lock-preprocessor-face)
                 (link0-value font-lock-string-face) (head font-lock-builtin-face) (method font-lock-function-name-face)
                 (basis font-lock-type-face) (keyword font-lock-keyword-face) (option font-lock-variable-name-face)
                 (value font-lock-constant-face) (title font-lock-string-face) (label font-lock-type-face)
                 (layer font-lock-constant-face) (number font-lock-constant-face) (variable font-lock-variable-name-face))

(defun quor-gjf--table (words)
  "A table of WORDS."
  (let ((table (make-hash-table :test #'equal)))
    (dolist (word words table) (puthash word t table))))

(defconst quor-gjf--tables
  `((link0key . ,(quor-gjf--table quor-gjf-words-link0key)) (method . ,(quor-gjf--table quor-gjf-words-method))
    (keyword . ,(quor-gjf--table (cons "oniom" quor-gjf-words-keyword))) (basis . ,(quor-gjf--table quor-gjf-words-basis)))
  "The words of each kind.")

(defun quor-gjf--is (kind begin end)
  "Tell whether a word of KIND stands between BEGIN and END."
  (gethash (downcase (buffer-substring-no-properties begin end)) (alist-get kind quor-gjf--tables)))

;;; The part of each line: (PART . NEXT), what it is and what the next line is unless it begins something.

(defun quor-gjf--part-of-line (state)
  "Return the part of the line at point, which begins in STATE, and the state behind it."
  (let ((blank (looking-at-p "[ \t\r]*$"))
        (case-fold-search t))
    (cond
     ((looking-at-p "[ \t]*--link1--") '(separator . control))
     ((memq state '(route route-check))
      (cond (blank (cons 'blank (if (eq state 'route) 'title 'section)))
            ((looking-at-p ".*\\_<allch") '(route . route-check))
            (t (cons 'route state))))
     ((eq state 'control)
      (cond ((looking-at-p "[ \t]*%") '(link0 . control))
            ((looking-at-p "[ \t]*#") (cons 'route (if (looking-at-p ".*\\_<allch") 'route-check 'route)))
            (t '(other . control))))
     ((eq state 'title) (if blank '(blank . title) '(title . in-title)))
     ((eq state 'in-title) (if blank '(blank . charge) '(title . in-title)))
     ((eq state 'charge)
      (cond (blank '(blank . charge))
            ((looking-at-p "[ \t]*!") '(other . charge))
            ((looking-at-p "[ \t]*[-+0-9]") '(section . atoms))
            (t '(section . section))))
     ((eq state 'atoms)
      (if (or blank (looking-at-p "[ \t]*\\(variables\\|constants\\)\\_>")) '(section . section) '(atom . atoms)))
     (t '(section . section)))))

(defun quor-gjf--mark-lines (begin end)
  "Tell the lines between BEGIN and END their parts."
  (goto-char begin)
  (beginning-of-line)
  (let ((state (if (bobp) 'control (or (cdr (get-text-property (1- (point)) 'quor-gjf-part)) 'control))))
    (while (and (< (point) end) (not (eobp)))
      (let ((part (quor-gjf--part-of-line state)))
        (put-text-property (point) (line-beginning-position 2) 'quor-gjf-part part)
        (setq state (cdr part))
        (forward-line)))))

;;; Colours.

(defsubst quor-gjf--colour (begin end name)
  "Give what stands between BEGIN and END the face of NAME."
  (put-text-property begin end 'face name))

(defun quor-gjf--skip (regexp)
  "Move behind REGEXP, which may stand at point, with blanks before and behind."
  (when (looking-at (concat "[ \t]*" regexp "[ \t]*")) (goto-char (match-end 0))))

(defun quor-gjf--colour-comment ()
  "Colour the comment that may stand at point, and move behind it."
  (when (eq (char-after) ?!)
    (quor-gjf--colour (point) (line-end-position) 'quor-gjf-comment)
    (goto-char (line-end-position))))

(defconst quor-gjf--option-regexp "\\(?:\"[^\"\n]*\"\\|[^] \t\r\n,=()!\"]\\)+")
(defconst quor-gjf--value-regexp "\\(?:\"[^\"\n]*\"\\|[^ \t\r\n,()!\"]\\)+")

(defun quor-gjf--colour-list (colour-item)
  "Colour what stands at point by COLOUR-ITEM: an item, or a list of them in parentheses."
  (if (not (eq (char-after) ?\())
      (funcall colour-item)
    (forward-char)
    (while (not (or (eobp) (eq (char-after) ?\))))
      (or (quor-gjf--colour-comment) (funcall colour-item) (forward-char)))
    (unless (eobp) (forward-char))))

(defun quor-gjf--colour-value ()
  "Colour the value at point."
  (when (looking-at quor-gjf--value-regexp)
    (quor-gjf--colour (point) (match-end 0) 'quor-gjf-value)
    (goto-char (match-end 0))))

(defun quor-gjf--colour-option ()
  "Colour the option at point, and its values."
  (when (looking-at quor-gjf--option-regexp)
    (quor-gjf--colour (point) (match-end 0) 'quor-gjf-option)
    (goto-char (match-end 0))
    (when (or (quor-gjf--skip "=") (eq (char-after) ?\())
      (quor-gjf--colour-list #'quor-gjf--colour-value))
    t))

(defun quor-gjf--colour-word (behind-slash)
  "Colour the word of a route at point, which may stand BEHIND-SLASH, and its options."
  (looking-at "[^ \t\r\n,/=:()#!]+")
  (let* ((begin (point))
         (end (match-end 0))
         (longer (and (looking-at "[^ \t\r\n,/=:()#!]+([^ \t\r\n()]*)") (match-end 0)))
         (kind (cond ((and longer (quor-gjf--is 'method begin longer)) (setq end longer) 'method)
                     ((quor-gjf--is 'method begin end) 'method)
                     (behind-slash 'basis)
                     ((quor-gjf--is 'keyword begin end) 'keyword)
                     ((quor-gjf--is 'basis begin (+ begin (save-excursion (skip-chars-forward "^*" end) (- (point) begin)))) 'basis))))
    (goto-char end)
    (when (eq kind 'basis)
      (when (looking-at "\\**([^ \t\r\n()]*)[^ \t\r\n,/=:()!]*") (goto-char (match-end 0)))
      (setq end (point)))
    (when kind (quor-gjf--colour begin end (intern (format "quor-gjf-%s" kind))))
    (unless (or (eq kind 'basis) (string= (downcase (buffer-substring-no-properties begin end)) "oniom"))
      (when (or (quor-gjf--skip "=") (progn (quor-gjf--skip "") (eq (char-after) ?\()))
        (quor-gjf--colour-list #'quor-gjf--colour-option)))))

(defun quor-gjf--colour-route (end)
  "Colour the route between point and END."
  (save-restriction
    (narrow-to-region (point) end)
    (let (behind-slash)
      (while (not (eobp))
        (cond ((quor-gjf--colour-comment))
              ((looking-at "#[pnt]?")
               (quor-gjf--colour (point) (match-end 0) 'quor-gjf-head)
               (goto-char (match-end 0)))
              ((looking-at "[^ \t\r\n,/=:()#!]")
               (quor-gjf--colour-word behind-slash)
               (setq behind-slash nil))
              ((looking-at "=[ \t]*")  ; behind the levels of ONIOM
               (goto-char (match-end 0))
               (quor-gjf--colour-list #'quor-gjf--colour-option))
              (t (setq behind-slash (eq (char-after) ?/))
                 (forward-char)
                 (when behind-slash (skip-chars-forward " \t"))))))))

(defun quor-gjf--colour-link0 ()
  "Colour the Link 0 line at point."
  (when (looking-at "[ \t]*%[ \t]*\\([a-z0-9]+\\)\\(?:[ \t]*=[ \t]*\\|[ \t]+\\|$\\)\\([^!\n]*[^! \t\r\n]\\)?")
    (when (quor-gjf--is 'link0key (match-beginning 1) (match-end 1))
      (quor-gjf--colour (match-beginning 1) (match-end 1) 'quor-gjf-link0-key))
    (when (match-beginning 2) (quor-gjf--colour (match-beginning 2) (match-end 2) 'quor-gjf-link0-value))))

(defconst quor-gjf--field "[^ \t\r\n,!]")

(defun quor-gjf--colour-field (column behind-layer)
  "Colour the word of an atom line at point, whose COLUMN counts from 0; BEHIND-LAYER is for the link atom there.
Return whether it names a layer."
  (let ((begin (point)))
    (looking-at (if (= column 0)
                    (concat "[^ \t\r\n,!(]+\\(?:([^)\n]*)\\)?" quor-gjf--field "*")
                  (concat quor-gjf--field "+")))
    (let* ((end (match-end 0))
           (is-layer (and (> column 0) (not behind-layer)
                          (save-match-data (looking-at "\\(?:h\\|hi\\|hig\\|high\\|l\\|lo\\|low\\|m\\|me\\|med\\|medi\\|mediu\\|medium\\)\\(?:[ \t\r,!]\\|$\\)")))))
      (goto-char end)
      (cond ((= column 0) (unless (eq (char-after begin) ?@) (quor-gjf--colour begin end 'quor-gjf-label)))
            (is-layer (quor-gjf--colour begin end 'quor-gjf-layer))
            ((string-match-p "\\`[-+]?\\.?[0-9]" (buffer-substring-no-properties begin end)) (quor-gjf--colour begin end 'quor-gjf-number))
            (behind-layer (quor-gjf--colour begin end 'quor-gjf-label))
            ((memq (char-after begin) '(?- ?+)) (quor-gjf--colour (1+ begin) end 'quor-gjf-variable))
            (t (quor-gjf--colour begin end 'quor-gjf-variable)))
      is-layer)))

(defconst quor-gjf--row
  (let ((atom "\\([a-z][a-z0-9_]*\\|[1-9][0-9]*\\)") (value "[^ \t\r\n,!]+"))
    (format "[ \t]*[^ \t\r\n,!(@]+[ \t]+%s[ \t]+%s\\(?:[ \t]+%s[ \t]+%s\\)?\\(?:[ \t]+%s[ \t]+%s\\)?\\(?:[ \t]+[-+]?[01]\\)?[ \t\r]*\\(?:!.*\\)?$"
            atom value atom value atom value))
  "A row of a Z-matrix; the words that name atoms are its groups.")

(defun quor-gjf--colour-atom ()
  "Colour the atom line at point: an atom, a row of a Z-matrix, or a variable and its value."
  (if (looking-at "[ \t]*[a-z][a-z0-9_]*[ \t]*=")
      (quor-gjf--colour-section)
    (let ((row (and (looking-at quor-gjf--row) (match-data)))
          (column 0)
          (behind-layer nil))
      (skip-chars-forward " \t,")
      (while (not (or (eolp) (memq (char-after) '(?! ?\())))
        (setq behind-layer (quor-gjf--colour-field column behind-layer)
              column (1+ column))
        (skip-chars-forward " \t,\r"))
      (when row
        (set-match-data row)
        (dolist (group '(1 2 3))
          (when (match-beginning group) (quor-gjf--colour (match-beginning group) (match-end group) 'quor-gjf-number)))))))

(defun quor-gjf--colour-section ()
  "Colour numbers, and the name that is given a value, in the line at point."
  (when (looking-at "[ \t]*\\([a-z][a-z0-9_]*\\)\\(?:[ \t]*=\\|[ \t]+[-+]?\\.?[0-9]\\)")
    (quor-gjf--colour (match-beginning 1) (match-end 1) 'quor-gjf-variable)
    (goto-char (match-end 1)))
  (let ((end (save-excursion (skip-chars-forward "^!\n") (point))))
    (while (re-search-forward "\\(?:^\\|[ \t,=]\\)\\([-+]?\\.?[0-9][^ \t\r\n,!]*\\)" end t)
      (quor-gjf--colour (match-beginning 1) (match-end 1) 'quor-gjf-number))))

(defun quor-gjf--colour-lines (limit)
  "Colour the lines between point and LIMIT; return nil, as all is done."
  (let ((case-fold-search t))
    (syntax-propertize limit)
    (beginning-of-line)
    (while (< (point) limit)
      (let ((begin (point))
            (part (car (get-text-property (point) 'quor-gjf-part))))
        (cond
         ((eq part 'route)
          (let ((last (point)))
            (while (and (not (bobp)) (eq 'route (car (get-text-property (1- (point)) 'quor-gjf-part)))) (forward-line -1))
            (setq begin (point))
            (goto-char last)
            (while (and (not (eobp)) (eq 'route (car (get-text-property (point) 'quor-gjf-part)))) (forward-line))
            (let ((end (point)))
              (goto-char begin)
              (quor-gjf--colour-route end)
              (goto-char end))))
         (t
          (pcase part
            ('separator (quor-gjf--colour (point) (line-end-position) 'quor-gjf-separator))
            ('title (quor-gjf--colour (point) (line-end-position) 'quor-gjf-title))
            ('link0 (quor-gjf--colour-link0))
            ('atom (quor-gjf--colour-atom))
            ('section (quor-gjf--colour-section)))
          (goto-char begin)
          (unless (eq part 'title)
            (skip-chars-forward "^!\n")
            (quor-gjf--colour-comment))
          (forward-line))))))
  (goto-char limit)
  nil)

;; What stands beside words of a route ends them, for completion too.
(defvar quor-gjf-mode-syntax-table
  (let ((table (make-syntax-table)))
    (dolist (character (string-to-list "=/%#,:!")) (modify-syntax-entry character "." table))
    (dolist (character (string-to-list "-+*")) (modify-syntax-entry character "_" table))
    table))

;;;###autoload
(define-derived-mode quor-gjf-mode prog-mode "Gaussian"
  "Edit Gaussian job files."
  (setq-local comment-start "! " comment-start-skip "!+[ \t]*" comment-end ""
              syntax-propertize-function #'quor-gjf--mark-lines
              font-lock-defaults '(((quor-gjf--colour-lines (0 nil))) t t)
              indent-line-function #'indent-relative))

;;;###autoload
(add-to-list 'auto-mode-alist '("\\.\\(?:gjf\\|com\\|gau\\)\\'" . quor-gjf-mode))

(with-eval-after-load 'eglot
  (add-to-list 'eglot-server-programs `((quor-gjf-mode :language-id "gaussian") . (,quor-gjf-program "lsp"))))

(provide 'quor-gjf-mode)
;;; quor-gjf-mode.el ends here
