VERSION 5.00
Begin VB.Form MainForm 
   Caption         =   "Corvane Support Kit samples"
   ClientHeight    =   6360
   ClientLeft      =   60
   ClientTop       =   450
   ClientWidth     =   8760
   LinkTopic       =   "MainForm"
   ScaleHeight     =   6360
   ScaleWidth      =   8760
   StartUpPosition =   3  'Windows Default
   Begin VB.CommandButton MessageButton 
      Caption         =   "A message box"
      Height          =   495
      Left            =   2400
      TabIndex        =   2
      Top             =   5760
      Width           =   2175
   End
   Begin VB.CommandButton RunButton 
      Caption         =   "Run the samples"
      Default         =   -1  'True
      Height          =   495
      Left            =   120
      TabIndex        =   1
      Top             =   5760
      Width           =   2175
   End
   Begin VB.TextBox Output 
      BeginProperty Font 
         Name            =   "Courier New"
         Size            =   9
         Charset         =   0
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Height          =   5535
      Left            =   120
      Locked          =   -1  'True
      MultiLine       =   -1  'True
      ScrollBars      =   2  'Vertical
      TabIndex        =   0
      Top             =   120
      Width           =   8535
   End
End
Attribute VB_Name = "MainForm"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

' The form is centred on the work area of its monitor by the library.
Private Sub Form_Load()
    esCenterForm Me.hWnd, False
    Output.Text = RunSamples()
End Sub

Private Sub RunButton_Click()
    Output.Text = RunSamples()
End Sub

' The caption comes from the program's main window when none is given.
Private Sub MessageButton_Click()
    Dim Answer As Long
    Answer = esMsgBox2("Hello from " & esGetFileRoot(App.Path) & " on " & esGetComputerName(), _
                       vbInformation Or vbOKCancel, "")
    Output.Text = Output.Text & vbCrLf & "esMsgBox2 answered " & Answer & vbCrLf
End Sub
